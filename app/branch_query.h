#pragma once

#include "app/base/branch.h"

#include <optional>

class cT_ADODB;

/// Reads the first branch in use, lowest code first. Offices with sub-number 0 are head entries, not
/// branches.
/// @param branch empty when no branch is in use
/// @return 0, or −1 with the reason in the connection's sErrMsg
short iReadFirstUsedBranch(cT_ADODB &db, std::optional<Branch> &branch);
