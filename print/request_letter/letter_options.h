#pragma once

#include "app/base/result.h"
#include "print/request_letter/letter_rows.h"

#include <QDate>
#include <optional>

class Folders;

/// What the user chooses for all letters of a run.
struct LetterOptions {
    QDate day;            ///< printed as the day of output
    bool grouped = false; ///< several patients of one doctor in one letter
    bool printPractitioner = true;
    int practitioner = 0; ///< which of the patient's practitioners; 0 the responsible one
    QString remark;       ///< printed on every letter
    /// None: the branch's own company, else the head office.
    std::optional<LetterCompany> sender{};
};

/// The last choices, which all users of a data folder share.
LetterOptions keptLetterOptions(const Folders &folders, const QDate &today);
Result<> keepLetterOptions(const Folders &folders, const LetterOptions &options);
