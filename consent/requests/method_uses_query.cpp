#include "consent/requests/method_uses_query.h"

#include "db/adodb.h"

using namespace Qt::Literals::StringLiterals;

Result<MethodUses> readMethodUses(cT_ADODB &db) {
    const Result<Recordset> rows =
        readRows(db, u"SELECT iDouiIraiType, COUNT(*) AS nRows FROM RIYOUSHA_DOUI_REC"
                     " WHERE iDouiIraiType > 0 GROUP BY iDouiIraiType"_s);
    if (!rows)
        return Failure{rows.reason()};
    MethodUses uses;
    for (int row = 0; row < rows->rowCount(); ++row)
        uses.insert(int(rows->number(row, 0)), int(rows->number(row, 1)));
    return uses;
}
