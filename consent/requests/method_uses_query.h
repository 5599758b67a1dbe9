#pragma once

#include "consent/requests/method_list.h"

class cT_ADODB;

/// Counts the consent rows of all branches, which share the list, by their method number. 0, or −1 with the
/// reason in the connection's sErrMsg.
short readMethodUses(cT_ADODB &db, MethodUses &uses);
