#pragma once

#include "consent/settings/period_types.h"

#include "app/base/result.h"
#include "db/tables/keys.h"

#include <QStringList>

class Folders;
class cT_ADODB;

/// Reads the types of a branch's patients, by number, from the latest month that each has in DOUIKIROKU, and
/// the practice's defaults. A patient without a row there is left out.
Result<std::vector<PatientTypes>> readPatientTypes(cT_ADODB &db, const Branch &branch);

/// What came of saving.
struct TypesSaved {
    QStringList overtaken; ///< patients whose types a colleague changed or removed; nothing was written
    bool defaultsOvertaken = false;
};

/// Writes the changed patients' types, in all their months, and the defaults where they differ from those
/// read: all of it or nothing. One statement serves many patients.
/// @param defaults as they are to be stored
Result<TypesSaved> savePeriodTypes(cT_ADODB &db, const Folders &folders, const Branch &branch,
                                   const PeriodTypeTable &table, const QString &defaults);
