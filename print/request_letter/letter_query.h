#pragma once

#include "print/request_letter/letter_rows.h"

class cT_ADODB;

/// Reads all letters' rows, doctors and the sender with one statement each. Rows that are not the newest of
/// their patient any more are left out. 0, or −1 with the reason in the connection's sErrMsg.
short readLetterSource(cT_ADODB &db, const Branch &branch, std::span<const LetterOrder> orders,
                       LetterSource &source);

/// Reads doctors and their institutions by code; codes that nobody has are left out. 0, or −1 with the reason
/// in the connection's sErrMsg.
short readLetterDoctors(cT_ADODB &db, QStringList codes, LetterDoctors &doctors);
