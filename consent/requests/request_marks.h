#pragma once

#include "print/request_letter/letter_job.h"

/// Marks the rows of letters that have left as requested, in one transaction.
/// @return what there is to say: that it failed, or which rows colleagues wrote meanwhile
std::optional<Message> markRequests(cT_ADODB &db, const std::vector<LetterMark> &letters);
