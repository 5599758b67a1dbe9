#pragma once

#include "app/base/branch.h"
#include "db/tables/masters/code.h"
#include "db/tables/masters/shinseisyo.h"

#include <QList>

namespace setup {

/// The code names that every practice has: outcomes, kinds of insurance, degrees of care, walking.
QList<cD_CODE> codeRows();

/// A branch's forms: those whose layouts an installation has.
QList<cD_SHINSEISYO> formRows(const Branch &branch);

} // namespace setup
