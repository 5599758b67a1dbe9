#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"
#include "consent/rows/letter_kind.h"

#include <span>

class cT_ADODB;

/// Reads all consents that the patients of the given rows have in a branch.
Result<GivenConsents> readGivenConsents(cT_ADODB &db, const Branch &branch,
                                        std::span<const ConsentRowKey> rows);
