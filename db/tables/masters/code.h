#pragma once

#include "db/tables/base/table.h"

/// One row of the code table: names of numbered codes by category.
struct cD_CODE {
    short iBunrui = 0; ///< category
    qint32 nIDNo = 0;  ///< number within the category
    QString cName;
    qint32 nIDIndex = 0;     ///< sub-number, the display order within the number
    Nullable<short> iUseFlg; ///< 0 or Null in use
    QString cBikou;

    static const TableDefinition<cD_CODE> &table();
};

extern template class Table<cD_CODE>;

class cT_CODE : public Table<cD_CODE> {
public:
    const cD_CODE *clsCODE(int index) const { return at(index); }

    /// The largest number of a category, 0 when it is empty.
    short iGetMaxIDNo(qint32 &result, short iBunrui);
    short iGetMaxIndexNo(qint32 &result, short iBunrui);

    /// @name Rows in use, ordered by category, number and sub-number
    ///@{
    short iDataReadGrid();
    short iDataReadGridBunrui(short iBunrui);
    /// Of one category and number, ordered by sub-number.
    short iDataReadGridBunrui_OrderIndex(short iBunrui, qint32 nIDNo);
    short iDataRead(const cD_CODE *key);
    ///@}
};
