#pragma once

#include "app/base/branch.h"
#include "db/tables/base/table.h"

/// A counsellor of a branch.
struct cD_SOUDAN {
    short iKyotenCd = 0, iKyotenEb = 0;
    qint32 nIDNo = 0;
    QString cName, cNameKana;
    Nullable<qint32> nSisetsuCode; ///< facility (SISETSU.nIDNo)
    QString cYubinNo, cAdress1, cAdress2;
    QString cTelNo, cFaxNo, cMobNo, cMail1, cMail2;
    Nullable<short> iChusiFlg; ///< other than 0 and Null: no longer active
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_SOUDAN> &table();
};

extern template class Table<cD_SOUDAN>;

class cT_SOUDAN : public Table<cD_SOUDAN> {
public:
    const cD_SOUDAN *clsSOUDAN(int index) const { return at(index); }

    short iGetMaxIDNo(qint32 &result, const Branch &branch);
    /// The counsellors of a branch, also those no longer active, in the order of their numbers.
    short iDataReadGrid(const Branch &branch);
};
