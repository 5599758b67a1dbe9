#pragma once

#include "consent/rows/letter_kind.h"
#include "consent/rows/list_cells.h"

#include <span>

/// A row ticked 対象, as the request screen shows it, and what is chosen for its letter.
struct RequestRow {
    ConsentRowKey key;
    QString who;                                                           ///< "IDNo. name"
    QString number, name, treatment, procedure, end, hospital, doctorName; ///< as the list shows them
    bool oral = false;
    bool requested = false; ///< a letter was output already
    LetterFacts facts;      ///< the doctor who is asked included

    bool onPaper = true; ///< 用紙で依頼: a letter is wanted
    LetterKind kind = LetterKind::MassageContinued;
    bool toHospital = false; ///< 病院依頼
};

/// Rows of the list with what is proposed for them: the letter's kind, and the addressee of the last letter
/// (the doctor before there was one; where letters went to both, the hospital, which somebody chose).
RequestRow requestRow(const ListRow &row, const GivenConsents &consents);
std::vector<RequestRow> requestRows(std::span<const ListRow> rows, const GivenConsents &consents);

/// Another doctor is asked: the kind is proposed anew.
void askDoctor(RequestRow &row, const QString &code, const QString &name, const QString &hospital);
