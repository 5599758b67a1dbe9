#pragma once

#include "print/consent_form/form_gather.h"

#include <QStringList>

struct Environment;

enum class PrintWay {
    Preview, ///< on the screen
    Print    ///< a single document asks for the printer, a batch goes to the usual one
};

/// Hands the document of one form to the report engine's viewer; the paper follows the layout's name.
/// @param touched gains the texts in which a character that code page 932 lacks was replaced
/// @return 0, or −1 with the reason
short iPrintForm(const Environment &environment, const ConsentForm &form, PrintWay way, QStringList &touched,
                 QString &reason);
