#pragma once

#include "app/base/result.h"
#include "consent/requests/method_list.h"

class cT_ADODB;

/// Counts the consent rows of all branches, which share the list, by their method number.
Result<MethodUses> readMethodUses(cT_ADODB &db);
