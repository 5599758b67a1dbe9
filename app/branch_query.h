#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"

#include <optional>

class cT_ADODB;

/// Reads the first branch in use, lowest code first. Offices with sub-number 0 are head entries, not
/// branches.
/// @return nothing when no branch is in use
Result<std::optional<Branch>> readFirstUsedBranch(cT_ADODB &db);
