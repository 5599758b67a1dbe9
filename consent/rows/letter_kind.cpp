#include "consent/rows/letter_kind.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

struct KindInfo {
    QString name, layout;
};

const KindInfo &infoOf(LetterKind kind) {
    static const std::array<KindInfo, letterKinds> kinds{{
        {u"新規利用者"_s, u"同意依頼書_CARE01.wfd"_s},
        {u"マッサージ継続"_s, u"同意依頼書_CARE02_マ継続.wfd"_s},
        {u"変形徒手継続"_s, u"同意依頼書_CARE02_変継続.wfd"_s},
        {u"変形徒手追加"_s, u"同意依頼書_CARE03_マto変.wfd"_s},
        {u"医師変更"_s, u"同意依頼書_CARE04_先生変更.wfd"_s},
    }};
    return kinds[size_t(kind)];
}

} // namespace

QString letterKindName(LetterKind kind) {
    return infoOf(kind).name;
}

QString letterKindLayout(LetterKind kind) {
    return infoOf(kind).layout;
}

bool continuesConsent(LetterKind kind) {
    return kind == LetterKind::MassageContinued || kind == LetterKind::DeformityContinued;
}

LetterKind proposeLetterKind(const LetterFacts &facts) {
    const bool otherDoctor =
        !facts.lastDoctor.isEmpty() && !facts.askedDoctor.isEmpty() && facts.lastDoctor != facts.askedDoctor;
    if (otherDoctor)
        return LetterKind::DoctorChanged;
    if (facts.consentedBefore)
        return facts.deformity ? LetterKind::DeformityContinued : LetterKind::MassageContinued;
    if (facts.deformity && facts.treatedOtherwise)
        return LetterKind::DeformityAdded;
    return LetterKind::NewPatient;
}

GivenConsents::GivenConsents(std::vector<GivenConsent> consents) {
    for (GivenConsent &consent : consents)
        m_byPatient.insert(consent.key.patient.nIDNo, std::move(consent));
}

LetterFacts GivenConsents::factsOf(const ConsentRowKey &row) const {
    LetterFacts facts;
    facts.deformity = row.iHenkeiFlg == 1;
    QDate latest;
    const auto [first, end] = m_byPatient.equal_range(row.patient.nIDNo);
    for (auto it = first; it != end; ++it) {
        const GivenConsent &consent = *it;
        if (consent.key.patient != row.patient)
            continue;
        const bool own = consent.key == row;
        if (own)
            facts.askedDoctor = consent.doctor;
        if (!consent.day.isValid() || consent.key.nDate > row.nDate)
            continue;
        if (consent.key.iHenkeiFlg != row.iHenkeiFlg) {
            facts.treatedOtherwise = true;
            continue;
        }
        facts.consentedBefore = true;
        // The row's own doctor is the one who consented last, whatever dates say.
        if (own || !latest.isValid() || consent.day >= latest) {
            facts.lastDoctor = consent.doctor;
            latest = own ? QDate(9999, 12, 31) : consent.day;
        }
    }
    return facts;
}
