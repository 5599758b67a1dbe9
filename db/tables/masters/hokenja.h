#pragma once

#include "db/tables/base/table.h"

/// An insurer.
struct cD_HOKENJA {
    QString cHokenNo; ///< insurer number
    QString cHokenJName, cHokenJNameKana;
    Nullable<short> iHoken; ///< kind of insurance
    QString cYubinNo, cAddress1, cAddress2, cTelNo, cFaxNo;
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_HOKENJA> &table();
};

extern template class Table<cD_HOKENJA>;

class cT_HOKENJA : public Table<cD_HOKENJA> {
public:
    const cD_HOKENJA *clsHOKENJA(int index) const { return at(index); }

    /// All insurers in the order of their numbers.
    short iDataReadGrid();
};
