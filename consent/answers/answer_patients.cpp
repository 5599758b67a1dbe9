#include "consent/answers/answer_patients.h"

#include "app/base/dates.h"
#include "app/base/text.h"

#include <QStringList>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString comparable(const QString &text) {
    return foldForSearch(text).removeIf([](QChar c) { return c.isSpace(); });
}

constexpr int noHit = 9;

/// How well a patient fits; the smaller the better.
int fit(const QString &typed, const QString &number, const QString &name, const QString &kana) {
    if (number == typed)
        return 0;
    if (number.startsWith(typed))
        return 1;
    if (kana.startsWith(typed) || name.startsWith(typed))
        return 2;
    return kana.contains(typed) || name.contains(typed) ? 3 : noHit;
}

int standing(const AnswerPatient &patient) {
    return patient.isAwaited() ? 0 : patient.consents.empty() || patient.excluded ? 2 : 1;
}

QString consentText(const AnswerPatient &patient, const AnswerConsent &consent, const QDate &today) {
    return u"%1 ～%2%3 %4"_s.arg(treatmentText(patient.kind, consent.deformity), dateText(consent.end),
                                 consent.end < today ? u" 期限切れ"_s : QString(),
                                 answerStateText(consent.requested, consent.received));
}

} // namespace

bool AnswerPatient::isAwaited() const {
    return !excluded && std::ranges::any_of(consents, &AnswerConsent::isAwaited);
}

QString answerStateText(bool requested, bool received) {
    return received ? u"受領済み"_s : requested ? u"返事待ち"_s : u"未依頼"_s;
}

AnswerPatients::AnswerPatients(std::vector<AnswerPatient> patients) : m_patients(std::move(patients)) {
    for (const AnswerPatient &patient : m_patients) {
        m_names.push_back(comparable(patient.name));
        m_kanas.push_back(comparable(patient.kana));
    }
}

std::vector<const AnswerPatient *> AnswerPatients::find(const QString &text, size_t most) const {
    const QString typed = comparable(text);
    std::vector<std::pair<std::pair<int, int>, const AnswerPatient *>> hits;
    if (!typed.isEmpty())
        for (size_t i = 0; i < m_patients.size(); ++i) {
            const int fits = fit(typed, QString::number(m_patients[i].number), m_names[i], m_kanas[i]);
            if (fits < noHit)
                hits.push_back({{fits, standing(m_patients[i])}, &m_patients[i]});
        }
    std::ranges::stable_sort(hits, {}, &decltype(hits)::value_type::first);
    std::vector<const AnswerPatient *> found;
    for (size_t i = 0; i < std::min(most, hits.size()); ++i)
        found.push_back(hits[i].second);
    return found;
}

void AnswerPatients::update(qint32 number, std::vector<AnswerConsent> consents) {
    const auto patient = std::ranges::find(m_patients, number, &AnswerPatient::number);
    if (patient != m_patients.end())
        patient->consents = std::move(consents);
}

QString hitText(const AnswerPatient &patient, const QDate &today) {
    QStringList states;
    if (patient.excluded || patient.ended.isValid())
        states.append(u"終了した利用者"_s);
    for (const AnswerConsent &consent : patient.consents)
        states.append(consentText(patient, consent, today));
    if (patient.consents.empty())
        states.append(u"同意なし"_s);
    return u"%1　%2（%3）　%4"_s.arg(QString::number(patient.number), patient.name, patient.kana,
                                     states.join(u"、"_s));
}
