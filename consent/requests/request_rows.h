#pragma once

#include "consent/requests/letter_kind.h"
#include "db/tables/keys.h"

#include <QString>
#include <span>
#include <vector>

class ConsentListModel;

/// A consent of a patient, as far as the kind of a letter hangs on it.
struct GivenConsent {
    ConsentRowKey key;
    QDate day;      ///< invalid: not consented to yet
    QString doctor; ///< code
};

/// A row ticked 対象, as the request screen shows it, and what is chosen for its letter.
struct RequestRow {
    ConsentRowKey key;
    QString number, name, treatment, procedure, end, hospital, doctorName; ///< as the list shows them
    bool oral = false;
    bool requested = false; ///< a letter was output already
    LetterFacts facts;      ///< the doctor who is asked included

    bool onPaper = true; ///< 用紙で依頼: a letter is wanted
    LetterKind kind = LetterKind::MassageContinued;
    bool toHospital = false; ///< 病院依頼

    /// "IDNo. name".
    QString who() const { return number + u' ' + name; }
};

/// The ticked and shown rows of the list with what is proposed for them: the letter's kind, and the addressee
/// of the last letter (the doctor before there was one).
/// @param consents all consents of the patients
std::vector<RequestRow> requestRows(const ConsentListModel &model, std::span<const GivenConsent> consents);

/// How many more rows are ticked 対象 and narrowed away.
int targetsOutOfSight(const ConsentListModel &model);

/// Another doctor is asked: the kind is proposed anew.
void askDoctor(RequestRow &row, const QString &code, const QString &name, const QString &hospital);
