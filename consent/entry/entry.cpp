#include "consent/entry/entry.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/settings.h"
#include "consent/entry/entry_query.h"
#include "consent/record/entry_save.h"
#include "consent/rules/period_text.h"
#include "consent/rules/plausibility.h"
#include "db/tables/patient_text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

short ConsentEntry::fail(const QString &reason) {
    m_error = reason;
    return -1;
}

short ConsentEntry::iOpen(const ConsentRowKey &key) {
    if (iBegin(key.patient) != 0)
        return -1;
    const auto found =
        std::ranges::find_if(m_rows, [&](const ConsentDraft &row) { return row.key() == key; });
    if (found == m_rows.end())
        return fail(u"対象データ無し\r\n処理を終了します。"_s);
    m_stored = *found;
    m_draft = m_opened = *found;
    return 0;
}

short ConsentEntry::iNew(const PatientKey &patient) {
    if (iBegin(patient) != 0)
        return -1;
    m_stored.reset();
    const ConsentDraft *before = newest(0);
    m_draft = newDraft(patient, before);
    if (!before) {
        const Result<QString> diagnosis = readDefaultDiagnosis(m_db, m_patient);
        if (!diagnosis)
            return fail(diagnosis.reason() + u"\r\nsetMasSyobyo()でエラー"_s);
        m_draft.cDouiByoumei = *diagnosis;
        followDiagnosis({});
    }
    if (!m_draft.cIsiCd.isEmpty() && setDocData() != 0)
        return -1;
    m_opened = m_draft;
    return 0;
}

short ConsentEntry::iBegin(const PatientKey &patient) {
    const Result<std::optional<EntryPatient>> read = readEntryPatient(m_db, patient);
    if (!read)
        return fail(u"対象データが取得できませんでした。\r\n"_s + read.reason());
    if (!*read)
        return fail(u"該当する利用者データがありません。"_s);
    m_patient = **read;
    return iReadRows() == 0 ? iReadBasis() : short(-1);
}

short ConsentEntry::iReadRows() {
    const Result<std::vector<ConsentDraft>> rows = readConsents(m_db, m_patient.key);
    if (!rows)
        return fail(u"対象データが取得できませんでした。\r\n"_s + rows.reason() +
                    u"\r\niGetDouiData() でエラー"_s);
    m_rows = *rows;
    return 0;
}

short ConsentEntry::iReadBasis() {
    const Settings settings(m_environment.folders);
    m_basis = {};
    m_unread = settings.readable(Setting::祝日考慮).reason();
    if (!m_unread.isEmpty())
        return 0;
    m_reader.emplace(m_environment.folders, m_patient.key.branch(), m_db);
    const Result<PeriodBasis> read = m_reader->of(m_patient.key.nIDNo, settings.isOn(Setting::祝日考慮));
    if (!read)
        return fail(u"期間の設定を読み込めません。"_s + read.reason());
    m_basis = *read;
    return 0;
}

// A doctor who is in no list keeps the data that the consent before him had; one who cannot be looked up must
// not be registered under another's name.
short ConsentEntry::setDocData() {
    const Result<std::optional<DoctorData>> read =
        m_draft.cIsiCd.isEmpty() ? std::optional(DoctorData()) : readDoctorData(m_db, m_draft.cIsiCd);
    if (read && !*read)
        return 0;
    const DoctorData doctor = read ? **read : DoctorData();
    m_draft.cDouiIsiName = doctor.cName;
    m_draft.cDouiIsiAdd = doctor.cAddress1;
    m_draft.cDouiIsiKikan = doctor.cShamei1;
    return read ? short(0) : fail(read.reason() + u"\r\nsetDocData() でエラー"_s);
}

bool ConsentEntry::isChanged() const {
    return !sameValues(m_draft, m_opened, Compared::All);
}

std::vector<ConsentDraft> ConsentEntry::others() const {
    std::vector<ConsentDraft> rows;
    std::ranges::copy_if(m_rows, std::back_inserter(rows),
                         [&](const ConsentDraft &row) { return !m_stored || row.key() != m_stored->key(); });
    return rows;
}

const ConsentDraft *ConsentEntry::newest(short iHenkeiFlg) const {
    const auto found = std::find_if(m_rows.rbegin(), m_rows.rend(),
                                    [&](const ConsentDraft &row) { return row.iHenkeiFlg == iHenkeiFlg; });
    return found == m_rows.rend() ? nullptr : &*found;
}

short ConsentEntry::enter(QStringView column, const QVariant &value) {
    if (column == u"iHenkeiFlg") {
        setKind(value.value<short>());
        return 0;
    }
    const ConsentDraft before = m_draft;
    setColumnValue(m_draft, column, value);
    followPeriod(column, before);
    followTick(column);
    followDiagnosis(before);
    return column == u"cIsiCd" ? setDocData() : short(0);
}

void ConsentEntry::followPeriod(QStringView column, const ConsentDraft &before) {
    if (column == u"tDouiDay") {
        if (!isDeformity(m_draft) && m_unread.isEmpty())
            m_draft.nDouiUpMonth = ruledMonths(m_basis, m_draft);
        proposePeriod();
    } else if (column == u"nDouiUpMonth") {
        proposePeriod();
    } else if (column == u"tDouiKaryoS" || column == u"tDouiKaryoE") {
        Period entered{m_draft.tDouiKaryoS, m_draft.tDouiKaryoE};
        if (column == u"tDouiKaryoS" && entered.start.isValid() && m_unread.isEmpty())
            entered.end = endFromStart(m_basis, m_draft);
        m_draft.tDouiKaryoS = before.tDouiKaryoS;
        m_draft.tDouiKaryoE = before.tDouiKaryoE;
        setPeriod(entered);
    }
}

// Stored rows keep their kind: a change of it would be another consent.
void ConsentEntry::setKind(short iHenkeiFlg) {
    if (m_stored || m_draft.iHenkeiFlg == iHenkeiFlg)
        return;
    m_draft.iHenkeiFlg = iHenkeiFlg;
    if (isDeformity(m_draft)) {
        m_draft.iSejutuBui1 = short(0); // the trunk is not corrected
        const ConsentDraft *before = newest(1);
        m_draft.nDouiUpMonth = before ? before->nDouiUpMonth : Nullable<qint32>();
    } else {
        m_draft.iSejutuBui1 = m_opened.iSejutuBui1;
        m_draft.tHenkeSday = m_draft.tHenKeEday = {};
    }
    if (m_unread.isEmpty())
        m_draft.nDouiUpMonth = ruledMonths(m_basis, m_draft);
    proposePeriod();
}

void ConsentEntry::proposePeriod() {
    if (!m_draft.tDouiDay.isValid() || !m_unread.isEmpty())
        return;
    if (m_draft.nDouiUpMonth <= 0)
        m_draft.nDouiUpMonth = ruledMonths(m_basis, m_draft);
    const PeriodReckoning reckoning = reckonDraft(m_basis, m_draft, others());
    m_draft.nDouiUpMonth = reckoning.rule.months;
    if (reckoning.period.start.isValid())
        setPeriod(reckoning.period);
}

// Treatments that ran as long as the consent go on doing so.
void ConsentEntry::setPeriod(const Period &period) {
    const Period before{m_draft.tDouiKaryoS, m_draft.tDouiKaryoE};
    m_draft.tDouiKaryoS = period.start;
    m_draft.tDouiKaryoE = period.end;
    for (const Treatment &treatment : treatments()) {
        const bool given = treatment.flag ? m_draft.*treatment.flag != 0 : isDeformity(m_draft);
        const Period own{m_draft.*treatment.start, m_draft.*treatment.end};
        if (given && (own == before || own == Period())) {
            m_draft.*treatment.start = period.start;
            m_draft.*treatment.end = period.end;
        }
    }
}

void ConsentEntry::followTick(QStringView column) {
    for (const Treatment &treatment : treatments()) {
        if (!treatment.flag || treatment.flagColumn != column)
            continue;
        const bool given = m_draft.*treatment.flag != 0;
        m_draft.*treatment.start = given ? m_draft.tDouiKaryoS : QDate();
        m_draft.*treatment.end = given ? m_draft.tDouiKaryoE : QDate();
    }
}

// Acupuncture's diagnosis is what is ticked; that of the patient's own treatment says the same. Each follows
// until it is given words of its own.
void ConsentEntry::followDiagnosis(const ConsentDraft &before) {
    const auto follow = [](QString &own, const QString &was, const QString &now) {
        if (was != now && (own.isEmpty() || own == was))
            own = now;
    };
    if (m_patient.acupuncture && !isDeformity(m_draft))
        follow(m_draft.cDouiByoumei, diseaseNames(before), diseaseNames(m_draft));
    const QString &diagnosis = m_draft.cDouiByoumei;
    if (m_patient.acupuncture) {
        follow(m_draft.cByoumeiH, before.cDouiByoumei, diagnosis);
    } else {
        follow(m_draft.cByoumeiM, before.cDouiByoumei, diagnosis);
        follow(m_draft.cMasByoumei, before.cDouiByoumei, diagnosis);
    }
}

QString ConsentEntry::explainPeriod() const {
    if (!m_draft.tDouiDay.isValid() || !m_unread.isEmpty())
        return m_unread;
    const PeriodReckoning reckoning = reckonDraft(m_basis, m_draft, others());
    const QString difference = periodDifference({m_draft.tDouiKaryoS, m_draft.tDouiKaryoE}, reckoning);
    const QString how = ::explainPeriod(reckoning, ConsentName::Consent);
    return difference.isEmpty() ? how : how + u"\n"_s + difference;
}

Result<std::optional<DraftProblem>> ConsentEntry::check() {
    if (iReadRows() != 0)
        return Failure{m_error};
    std::vector<ConsentRowKey> keys;
    for (const ConsentDraft &row : others())
        keys.push_back(row.key());
    const ConsentRowKey target = draftKey(m_draft, m_stored ? &*m_stored : nullptr);
    return checkDraft(m_draft, m_patient.acupuncture, target, keys);
}

// What was registered once was meant.
QStringList ConsentEntry::doubts() const {
    const ConsentDraft before = m_stored.value_or(ConsentDraft());
    const QDate today = m_environment.clock.today();
    QStringList doubts;
    if (m_draft.tShinsatsuDay != before.tShinsatsuDay)
        doubts += doubtsOf({u"診察日"_s, m_draft.tShinsatsuDay}, today);
    const Period period{m_draft.tDouiKaryoS, m_draft.tDouiKaryoE};
    if (m_draft.tDouiDay == before.tDouiDay && period == Period{before.tDouiKaryoS, before.tDouiKaryoE})
        return doubts;
    QDate ruledEnd;
    if (m_unread.isEmpty())
        ruledEnd = reckonDraft(m_basis, m_draft, others()).period.end;
    return doubts + doubtsOf({u"同意日"_s, m_draft.tDouiDay, period, {}, ruledEnd}, today);
}

RowOutcome ConsentEntry::save() {
    const RowOutcome outcome = saveDraft(m_db, m_draft, m_stored ? &*m_stored : nullptr, m_savedKey);
    if (outcome.kind == RowOutcome::Done)
        m_opened = m_draft;
    return outcome;
}

Result<MergeRow> ConsentEntry::overtaken() {
    if (iReadRows() != 0)
        return Failure{m_error};
    const auto found = std::ranges::find(m_rows, m_stored->key(), &ConsentDraft::key);
    m_standing = found == m_rows.end() ? std::nullopt : std::optional(*found);
    return mergeDraft(patientText(m_patient.key.nIDNo, m_patient.name), *m_stored, m_draft, m_standing,
                      Compared::Entered);
}

void ConsentEntry::take(const MergeRow &merged) {
    m_draft = mergedDraft(merged, m_draft, *m_standing);
    m_stored = m_opened = *m_standing;
}
