#pragma once

#include "app/base/branch.h"
#include "db/tables/base/table.h"

/// A visit-fee band: what a visit within a range of distances costs while the band is valid.
struct cD_往療費区分 {
    QString cEndDate, cStartDate;      ///< validity, both days included, text yyyy/mm/dd
    Nullable<double> dMaxLen, dMinLen; ///< the limits in kilometres
    qint32 nKingakuOuryou = 0;         ///< visit fee, yen
    Nullable<qint32> nKingakuSejyutsu; ///< treatment amount, yen
    qint32 nMaxLen = 0, nMinLen = 0;   ///< the limits in metres

    static const TableDefinition<cD_往療費区分> &table();
};

extern template class Table<cD_往療費区分>;

/// Reading by a day knows no office; what is written belongs to the office given to iInit. A row is found by
/// its office, its nMinLen and the record's first day: every row that is valid on that day.
class cT_往療費区分 : public Table<cD_往療費区分> {
public:
    const cD_往療費区分 *cls往療費区分(int index) const { return at(index); }

    short iInit(cT_ADODB &db, const Branch &office);
    /// The bands of all offices that are valid on the record's first day, in the order of nMinLen.
    /// @param byLength only those that begin at the record's nMinLen
    short iDataRead(const cD_往療費区分 *key, bool byLength = false);
    /// All bands of the office in the order of cStartDate and nMinLen.
    short iDataReadGrid();

private:
    QString writingSql(Writing writing, const QStringList &literals) const override;

    Branch m_office;
};
