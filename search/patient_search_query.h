#pragma once

#include "app/base/branch.h"

#include <QString>

struct PatientConditions;
class QDate;

/// The patients under the conditions, by number. Columns: iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana,
/// cNameRyaku, cTelNo, cAdress1, cAdress2.
/// @param allOffices a chosen staff member is looked for in every office, not only in `office`
QString patientListSql(const PatientConditions &conditions, const Branch &office, bool allOffices,
                       const QDate &today);

/// nIDNo, cName and cNameKana of one patient.
QString patientNameSql(qint64 number, const Branch &office);

/// nIDNo, cName and cNameRyaku of the office's staff, by number.
QString staffPickListSql(const Branch &office);
