#include "app/branch_query.h"

#include "db/adodb.h"

using namespace Qt::Literals::StringLiterals;

short iReadFirstUsedBranch(cT_ADODB &db, std::optional<Branch> &branch) {
    branch.reset();
    Recordset rows;
    const short status = db.iOpenRecSet(rows, u"SELECT TOP 1 KYOTEN.iKyotenCd, KYOTEN.iKyotenEb FROM KYOTEN"
                                              " WHERE (KYOTEN.iUsedFlg = 1 OR KYOTEN.iUsedFlg = 2)"
                                              " AND KYOTEN.iKyotenEb <> 0"
                                              " ORDER BY KYOTEN.iKyotenCd, KYOTEN.iKyotenEb"_s);
    if (status != 0)
        return status;
    if (rows.rowCount() > 0)
        branch = Branch{cT_ADODB::iNull(rows, 0, 0), cT_ADODB::iNull(rows, 0, 1)};
    return db.iCloseRecSet(rows);
}
