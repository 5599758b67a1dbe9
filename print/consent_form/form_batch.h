#pragma once

#include "print/batch/batch_print.h"
#include "print/consent_form/form_gather.h"

class Folders;

/// Writes the data of one form of a batch and describes its report.
/// @param touched gains the texts in which a character that code page 932 lacks was replaced
Result<BatchReport> makeFormReport(const Folders &folders, const ConsentForm &form, PrintFiles &files,
                                   QStringList &touched);
