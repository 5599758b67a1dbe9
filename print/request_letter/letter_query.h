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

/// Writes that a letter was output for a row: the request mark of its kind and where the letter went. No
/// affected row means that the row is gone, or followed by another one.
/// @param computer name of this computer, for the row's audit column
QString markOutputSql(const LetterRow &row, bool toHospital, const QString &computer);
/// Condition that nobody has written the row since it was read.
QString sqlUnchanged(const LetterRow &row);
