#pragma once

#include <QString>
#include <array>
#include <vector>

/// The three types by which periods are reckoned (iDoui1CalcType, iDoui2CalcType, iKikanCalcType), as they
/// are typed: 1 or 2. Empty: none, the practice's defaults hold.
using PeriodTypes = std::array<QString, 3>;

/// As the settings file keeps them, joined with ",".
PeriodTypes periodTypesOf(const QString &stored);
QString storedPeriodTypes(const PeriodTypes &types);

/// A patient's types: as read, and as they stand.
struct PatientTypes {
    qint32 nIDNo = 0;
    QString cName;
    PeriodTypes read;
    PeriodTypes now;
    bool ticked = false;

    bool isChanged() const { return now != read; }
    /// Neither 1 nor 2, nor empty as it was read.
    bool isWrong(size_t type) const;
};

/// All patients of the practice with their types, and the practice's defaults.
struct PeriodTypeTable {
    QString defaults; ///< as the settings file holds them
    std::vector<PatientTypes> patients;

    /// Takes a table that was read later: what was edited stays on the patients whose types nobody has
    /// changed meanwhile.
    void takeOver(const PeriodTypeTable &later);
};
