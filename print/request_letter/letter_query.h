#pragma once

#include "app/base/result.h"
#include "print/request_letter/letter_rows.h"

class cT_ADODB;

/// Reads all letters' rows, doctors and the sender with one statement each. Rows that are not the newest of
/// their patient any more are left out.
Result<LetterSource> readLetterSource(cT_ADODB &db, const Branch &branch,
                                      std::span<const LetterOrder> orders);

/// Reads doctors and their institutions by code; codes that nobody has are left out.
Result<LetterDoctors> readLetterDoctors(cT_ADODB &db, QStringList codes);
