#pragma once

#include "db/tables/base/table.h"

/// A branch (拠点) of the practice.
struct cD_KYOTEN {
    short iKyotenCd = 0, iKyotenEb = 0; ///< sub-number 0: head row of the code, no branch of its own
    QString cKyotenName;
    Nullable<short> iUsedFlg; ///< 1 in use, 2 in use for searches only, 0 closed
    QString cYubinNo, cAddress1, cAddress2, cTelNo, cFaxNo;
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_KYOTEN> &table();
};

extern template class Table<cD_KYOTEN>;

class cT_KYOTEN : public Table<cD_KYOTEN> {
public:
    const cD_KYOTEN *clsKYOTEN(int index) const { return at(index); }

    /// The branches in use, without the head rows, by code and sub-number.
    short iDataReadGrid();
};
