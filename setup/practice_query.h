#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"
#include "setup/holidays.h"

class cT_ADODB;

namespace setup {

/// How many rows a table has, or those that a condition behind its name leaves.
Result<qint64> countRows(cT_ADODB &db, const QString &table);

/// Writes holidays as a branch's days off. 0, or −1 with the connection's reason.
short insertHolidays(cT_ADODB &db, const Branch &branch, const QList<Holiday> &holidays);

} // namespace setup
