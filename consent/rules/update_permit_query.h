#pragma once

#include "app/base/branch.h"

class cT_ADODB;

/// Reads the branch's update reference day as it is kept (iDouiUpdatePermitDay of CORP_SUB); 0 when there is
/// no row or no value. 0, or −1 with the reason in the connection's sErrMsg.
short readUpdateReferenceDay(cT_ADODB &db, const Branch &branch, int &day);
