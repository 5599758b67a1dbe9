#pragma once

#include "app/base/result.h"
#include "consent/rules/period.h"
#include "db/tables/keys.h"

#include <QHash>
#include <optional>
#include <vector>

class Folders;
class cT_ADODB;

/// Fills the calculation types that a patient has none of from the practice's defaults.
/// @param defaults the three types joined with ","
void fillCalculationTypes(PeriodSettings &settings, const QString &defaults);

/// What the rule of one patient's periods leans on.
struct PeriodBasis {
    PeriodSettings settings;           ///< the patient's, the practice's defaults where he has none
    const Holidays *daysOff = nullptr; ///< null while they are not to be considered
};

/// The one reader of what periods are reckoned by: the patients' settings, the practice's default calculation
/// types and the branch's days off. What was read is kept until forget().
class PeriodBasisReader {
public:
    /// The arguments must outlive the reader.
    PeriodBasisReader(const Folders &folders, const Branch &branch, cT_ADODB &db)
        : m_folders(folders), m_branch(branch), m_db(db) {}

    void forget();
    /// Reads the settings of many patients of the branch at once; nothing more is asked for them.
    Result<> prepare(std::vector<qint32> patients);
    /// The days off live as long as the reader remembers them.
    Result<PeriodBasis> of(qint32 patient, bool considerDaysOff);

private:
    Result<QString> defaults();
    Result<const Holidays *> daysOff();

    const Folders &m_folders;
    Branch m_branch;
    cT_ADODB &m_db;
    std::optional<QString> m_defaults;
    std::optional<Holidays> m_daysOff;
    QHash<qint32, PeriodSettings> m_settings; ///< by patient
};
