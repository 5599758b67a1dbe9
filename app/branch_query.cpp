#include "app/branch_query.h"

#include "db/adodb.h"

using namespace Qt::Literals::StringLiterals;

Result<std::optional<Branch>> readFirstUsedBranch(cT_ADODB &db) {
    const Result<Recordset> rows = readRows(db, u"SELECT TOP 1 KYOTEN.iKyotenCd, KYOTEN.iKyotenEb FROM KYOTEN"
                                                " WHERE (KYOTEN.iUsedFlg = 1 OR KYOTEN.iUsedFlg = 2)"
                                                " AND KYOTEN.iKyotenEb <> 0"
                                                " ORDER BY KYOTEN.iKyotenCd, KYOTEN.iKyotenEb"_s);
    if (!rows)
        return Failure{rows.reason()};
    if (rows->rowCount() == 0)
        return std::optional<Branch>();
    return std::optional(Branch{cT_ADODB::iNull(*rows, 0, 0), cT_ADODB::iNull(*rows, 0, 1)});
}
