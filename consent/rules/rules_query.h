#pragma once

#include "app/base/result.h"
#include "consent/rules/period.h"
#include "db/tables/keys.h"

#include <QHash>
#include <vector>

class cT_ADODB;

/// Reads the days off of a branch, rows of HOLIDAY whose iChkCalendar is not 0; rows that are no day of the
/// calendar are left out.
Result<Holidays> readHolidays(cT_ADODB &db, const Branch &branch);

/// Reads the period settings of a branch's patients from the latest month that each has in DOUIKIROKU, with
/// one statement; all 0 for a patient who has none.
/// @return by patient number
Result<QHash<qint32, PeriodSettings>> readPeriodSettings(cT_ADODB &db, const Branch &branch,
                                                         const std::vector<qint32> &patients);

/// Reads the branch's update reference day as it is kept (iDouiUpdatePermitDay of CORP_SUB); 0 when there is
/// no row or no value.
Result<int> readUpdateReferenceDay(cT_ADODB &db, const Branch &branch);
