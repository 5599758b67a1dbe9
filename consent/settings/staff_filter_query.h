#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"

#include <QString>
#include <optional>

class cT_ADODB;

/// The name of a branch's practitioner, suspended ones too; nothing where the branch has no such number.
Result<std::optional<QString>> readStaffName(cT_ADODB &db, const Branch &branch, qint64 number);
