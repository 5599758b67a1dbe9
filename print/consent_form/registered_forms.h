#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"

#include <QString>
#include <vector>

class cT_ADODB;

/// A form of the form master that may be used.
struct RegisteredForm {
    qint32 number = 0;
    QString file;
    bool again = false; ///< for a re-consent
    bool acupuncture = false;
    QString name{}; ///< for the user
};

/// SHINSEISYO.iPrintType
enum class FormPrintType : short { ConsentForm = 1, RequestLetter = 2 };

/// A branch's forms in the order of their numbers; branch 0 holds the whole practice's.
Result<std::vector<RegisteredForm>> readRegisteredForms(cT_ADODB &db, const Branch &branch,
                                                        FormPrintType type);
