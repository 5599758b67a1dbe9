#include "consent/requests/method_uses_query.h"

#include "db/adodb.h"

using namespace Qt::Literals::StringLiterals;

short readMethodUses(cT_ADODB &db, MethodUses &uses) {
    Recordset rows;
    if (db.iConnect() != 0 ||
        db.iOpenRecSet(rows, u"SELECT iDouiIraiType, COUNT(*) AS nRows FROM RIYOUSHA_DOUI_REC"
                             " WHERE iDouiIraiType > 0 GROUP BY iDouiIraiType"_s) != 0)
        return -1;
    uses.clear();
    for (int row = 0; row < rows.rowCount(); ++row)
        uses.insert(int(rows.number(row, 0)), int(rows.number(row, 1)));
    return 0;
}
