#pragma once

#include "print/batch/batch_print.h"
#include "print/consent_form/form_gather.h"
#include "print/engine/wfd_print_exe.h"

class Folders;
struct Environment;

/// @name Handing consent forms to the report engine
///@{
/// One form by itself, by the engine's viewer; the paper follows the layout's name.
/// @return the texts in which a character that code page 932 lacks was replaced
Result<QStringList> printForm(const Environment &environment, const ConsentForm &form, PrintWay way);

/// Writes the data of one form of a batch and describes its report.
/// @param touched gains the texts in which a character that code page 932 lacks was replaced
Result<BatchReport> makeFormReport(const Folders &folders, const ConsentForm &form, PrintFiles &files,
                                   QStringList &touched);
///@}
