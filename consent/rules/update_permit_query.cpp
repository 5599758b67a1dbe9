#include "consent/rules/update_permit_query.h"

#include "db/adodb.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

short readUpdateReferenceDay(cT_ADODB &db, const Branch &branch, int &day) {
    Recordset rows;
    const QString sql = u"SELECT iDouiUpdatePermitDay FROM CORP_SUB WHERE "_s + sqlWhere(branch, u"CORP_SUB");
    if (db.iOpenRecSet(rows, sql) != 0)
        return -1;
    day = rows.rowCount() > 0 ? cT_ADODB::iNull(rows, 0, 0) : 0;
    return 0;
}
