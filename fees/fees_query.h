#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"
#include "db/recordset.h"
#include "db/tables/masters/visit_fee_band.h"

class cT_ADODB;

/// The rows of 療養費単価 or 往療費区分 that are in force in a month (text yyyymm), over a connection of its
/// own. Months are compared as texts: a row that begins or ends within a month counts for the whole of it.
/// @param order columns of the ORDER BY
Result<Recordset> readInForce(const QString &connectionString, QStringView table, const QString &month,
                              QStringView order);

using Bands = std::vector<cD_往療費区分>;

bool sameBands(const Bands &a, const Bands &b);

/// All bands of an office in the order of their first days and lengths.
Result<Bands> readBands(cT_ADODB &db, const Branch &office);

/// Makes the office's bands those of `now`, all or nothing. A band is known by its first day and nMinLen,
/// which no two of `now` share.
/// @param seen the bands as they were read
/// @return false when a colleague has changed them since: nothing is written
Result<bool> saveBands(cT_ADODB &db, const Branch &office, const Bands &seen, const Bands &now);
