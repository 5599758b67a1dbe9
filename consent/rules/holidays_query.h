#pragma once

#include "app/base/branch.h"
#include "consent/rules/holidays.h"

class cT_ADODB;

/// Reads the days off of a branch, rows of HOLIDAY whose iChkCalendar is not 0; rows that are no day of the
/// calendar are left out. 0, or −1 with the reason in the connection's sErrMsg.
short readHolidays(cT_ADODB &db, const Branch &branch, Holidays &holidays);
