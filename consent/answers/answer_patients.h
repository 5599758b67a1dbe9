#pragma once

#include "db/tables/keys.h"
#include "db/tables/patient_text.h"

#include <QString>
#include <vector>

/// A running consent as far as finding its patient needs it.
struct AnswerConsent {
    bool deformity = false;
    QDate end;
    bool requested = false;
    bool received = false;

    bool isAwaited() const { return requested && !received; }
};

/// A patient of the office, with or without a consent.
struct AnswerPatient {
    qint32 number = 0;
    QString name;
    QString kana;
    TreatmentKind kind = TreatmentKind::Massage;
    QDate ended;           ///< the day on which treatment ended; invalid while it goes on
    bool excluded = false; ///< by the outcome of treatment: in no list
    std::vector<AnswerConsent> consents{};

    QString who() const { return patientText(number, name); }
    bool isAwaited() const;
};

/// "返事待ち", "未依頼", "受領済み".
QString answerStateText(bool requested, bool received);

/// Finds patients by number, kana or name as one types; case, width, kana kind and blanks are ignored.
class AnswerPatients {
public:
    AnswerPatients() = default;
    /// @param patients in the order of their kana
    explicit AnswerPatients(std::vector<AnswerPatient> patients);

    /// The best hits first: the number itself, then what begins with the text, then what contains it; among
    /// equals those whose answer is awaited, and last those without a consent.
    std::vector<const AnswerPatient *> find(const QString &typed, size_t most) const;

    /// Takes over what a patient's consents are now.
    void update(qint32 number, std::vector<AnswerConsent> consents);

    size_t count() const { return m_patients.size(); }

private:
    std::vector<AnswerPatient> m_patients;
    std::vector<QString> m_names; ///< folded
    std::vector<QString> m_kanas; ///< folded
};

/// A hit as it is shown: number, name, kana and what its consents wait for.
QString hitText(const AnswerPatient &patient, const QDate &today);
