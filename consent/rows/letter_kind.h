#pragma once

#include "db/tables/keys.h"

#include <QMultiHash>
#include <QString>
#include <vector>

/// Kinds of request letter (同意依頼書種別), in the order in which they are offered.
enum class LetterKind { NewPatient, MassageContinued, DeformityContinued, DeformityAdded, DoctorChanged };

constexpr int letterKinds = 5;

/// "新規利用者" and the like.
QString letterKindName(LetterKind kind);
/// File name of the kind's layout.
QString letterKindLayout(LetterKind kind);

/// Whether a letter of the kind asks for the consent that follows another one of the same treatment.
bool continuesConsent(LetterKind kind);

/// A consent of a patient, as far as the kind of a letter hangs on it.
struct GivenConsent {
    ConsentRowKey key;
    QDate day;      ///< invalid: not consented to yet
    QString doctor; ///< code
};

/// What the kind of a row's letter hangs on.
struct LetterFacts {
    bool deformity = false;        ///< a deformity-correction row
    bool consentedBefore = false;  ///< a doctor has consented to this treatment: the row or an older one of
                                   ///< its kind has a consent date
    bool treatedOtherwise = false; ///< a doctor has consented to the patient's other treatment
    QString lastDoctor;            ///< code of the doctor of the latest of those consents; empty: not known
    QString askedDoctor;           ///< code of the doctor who is asked now; empty: not known
};

/// The kind that fits, the first of:
/// 1. the patient has a consent, and another doctor than the one who gave it is asked: 医師変更;
/// 2. the treatment was consented to before: 変形徒手継続 or マッサージ継続;
/// 3. deformity correction beside another treatment that was consented to: 変形徒手追加;
/// 4. else 新規利用者.
LetterKind proposeLetterKind(const LetterFacts &facts);

/// The consents that the patients of some rows have.
class GivenConsents {
public:
    GivenConsents() = default;
    explicit GivenConsents(std::vector<GivenConsent> consents);

    LetterFacts factsOf(const ConsentRowKey &row) const;

private:
    QMultiHash<qint32, GivenConsent> m_byPatient; ///< by patient number
};
