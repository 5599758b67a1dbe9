#pragma once

#include "print/consent_form/form_gather.h"

struct Environment;

enum class PrintWay {
    Preview, ///< on the screen
    Print    ///< a single document asks for the printer, a batch goes to the usual one
};

/// Hands the document of one form to the report engine's viewer; the paper follows the layout's name.
/// @return the texts in which a character that code page 932 lacks was replaced
Result<QStringList> printForm(const Environment &environment, const ConsentForm &form, PrintWay way);
