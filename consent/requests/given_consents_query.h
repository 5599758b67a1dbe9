#pragma once

#include "consent/requests/request_rows.h"

class cT_ADODB;

/// Reads all consents of the patients of the given rows. 0, or −1 with the reason in the connection's
/// sErrMsg.
short readGivenConsents(cT_ADODB &db, const Branch &branch, std::span<const ConsentRowKey> rows,
                        std::vector<GivenConsent> &consents);
