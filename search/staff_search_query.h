#pragma once

#include "app/base/branch.h"

#include <QString>

struct StaffConditions;

/// Offices to choose from: iKyotenCd, iKyotenEb, cKyotenName.
/// @param searchedOnly offices that are kept for searches only, too
QString officeListSql(bool searchedOnly);

/// The staff under the conditions, by number and name. Columns: nIDNo, iKyotenCd, iKyotenEb, cName,
/// cNameRyaku, cNameKana. Without a consultation `office` matters only where not all offices are searched.
QString staffListSql(const StaffConditions &conditions);

/// cName and iChusiFlg of one staff member.
QString staffCheckSql(qint64 number, const Branch &office);
