#include "consent/answers/answers.h"

#include "app/base/clock.h"
#include "app/base/dates.h"
#include "consent/answers/answers_query.h"
#include "db/adodb.h"

#include <algorithm>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace {

QString periodText(const QDate &start, const QDate &end) {
    return start.isValid() || end.isValid() ? u"、次回 %1～%2"_s.arg(dateText(start), dateText(end))
                                            : QString();
}

/// "受領済み：再同意日 2026/11/18、次回 2026/12/01～2027/05/31".
QString stateText(const ConsentRowValues &values) {
    const QString state = answerStateText(values.requested != 0, values.received != 0);
    return values.reconsent.isValid()
               ? u"%1：再同意日 %2%3"_s.arg(state, dateText(values.reconsent),
                                            periodText(values.nextStart, values.nextEnd))
               : state;
}

AnswerConsent summary(const ListRecords &records, int record) {
    const ConsentRowValues values = records.values(record);
    return {records.isDeformity(record), records.period(record).end, values.requested != 0,
            values.received != 0};
}

QString kindText(const ListRecords &records, int record) {
    return treatmentText(records.kind(record), records.isDeformity(record));
}

// Massage first.
std::vector<int> inOrder(const ListRecords &records) {
    std::vector<int> order(size_t(records.count()));
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](int record) {
        return std::pair(records.isDeformity(record), records.key(record).nHenkeiDouiDate);
    });
    return order;
}

// Of all the patient's consents, each with its kind.
QString allThatStands(const ListRecords &records) {
    QStringList states;
    for (const int record : inOrder(records))
        states.append(kindText(records, record) + u' ' + stateText(records.values(record)));
    return states.isEmpty() ? u"同意の期間がありません（更新または削除されました）。"_s
                            : states.join(u"／"_s);
}

} // namespace

AnswerDesk::AnswerDesk(const Environment &environment, cT_ADODB &db)
    : m_environment(environment), m_db(db), m_advisor(environment.folders, environment.branch, db) {}

Result<> AnswerDesk::begin() {
    m_advisor.links = keptLinks(m_environment.folders);
    Result<AnswerPatients> patients = readAnswerPatients(m_db, m_environment.branch);
    if (!patients)
        return Failure{patients.reason()};
    m_patients = std::move(*patients);
    return {};
}

Result<> AnswerDesk::open(AnswerPatient patient) {
    Result<Recordset> rows = readAnswerRows(m_db, m_environment.branch, patient.number);
    if (!rows)
        return Failure{rows.reason()};
    m_patient = std::move(patient);
    m_model.load(std::move(*rows), {m_environment.clock.today(), {}, {}, false, {}, &m_advisor});
    const ListRecords &records = m_model.records();
    m_records = inOrder(records);
    m_keys.clear();
    m_consents.clear();
    m_patient.consents.clear();
    for (const int record : m_records) {
        const AnswerConsent consent = summary(records, record);
        m_keys.push_back(records.key(record));
        m_patient.consents.push_back(consent);
        m_consents.append(u"%1 %2 ～%3 %4"_s.arg(QString::number(m_consents.size() + 1),
                                                 kindText(records, record), dateText(consent.end),
                                                 answerStateText(consent.requested, consent.received)));
    }
    m_patients.update(m_patient.number, m_patient.consents);
    return {};
}

int AnswerDesk::likeliest() const {
    const auto &consents = m_patient.consents;
    auto found = std::ranges::find_if(consents, &AnswerConsent::isAwaited);
    if (found == consents.end())
        found = std::ranges::find(consents, false, &AnswerConsent::received);
    if (found == consents.end())
        found = consents.begin();
    return found == consents.end() ? -1 : int(found - consents.begin());
}

int AnswerDesk::consentOf(const ConsentRowKey &key) const {
    const auto found = std::ranges::find(m_keys, key);
    return found == m_keys.end() ? -1 : int(found - m_keys.begin());
}

bool AnswerDesk::needsChoice() const {
    return std::ranges::count(m_patient.consents, false, &AnswerConsent::received) > 1;
}

QString AnswerDesk::notice(int consent) const {
    QStringList notices;
    if (m_patient.excluded)
        notices.append(u"終了した利用者です。返事を入力できません。"_s);
    else if (m_consents.isEmpty())
        notices.append(u"同意がありません。同意は一覧の新規（F1、Ctrl+F1）で登録してください。"_s);
    if (m_patient.ended.isValid())
        notices.append(u"%1 に施術を終了した利用者です。"_s.arg(dateText(m_patient.ended)));
    if (consent < 0 || consent >= m_consents.size())
        return notices.join(u'　');
    const int record = recordOf(consent);
    if (const QDate end = m_model.records().period(record).end; end < m_environment.clock.today())
        notices.append(u"要加療期間は %1 に終了しています。"_s.arg(dateText(end)));
    if (m_model.records().received(record) || m_model.records().values(record).reconsent.isValid())
        notices.append(whatStands(record) + u"。登録すると置き換えます。"_s);
    return notices.join(u'　');
}

QString AnswerDesk::whatStands(int record) const {
    return stateText(m_model.records().values(record));
}

// An answer has the date of the pile that it lies in, unless the practice wants each patient's own.
QDate AnswerDesk::proposedDay(int consent) {
    const int record = recordOf(consent);
    if (const QDate day = m_advisor.reconsentDay(m_model.records().running(record)); day.isValid())
        return day;
    return m_lastDay.isValid() ? m_lastDay : m_model.records().values(record).reconsent;
}

Period AnswerDesk::proposedPeriod(int consent, const QDate &date) {
    return date.isValid() ? m_advisor.nextPeriod(m_model.records().running(recordOf(consent)), date)
                          : Period();
}

// As the list does it: the date brings the period and goes on to the deformity correction, what was typed as
// the period stays, the tick comes last.
void AnswerDesk::enter(int record, const ReConsent &answer) {
    m_model.dropChanges();
    const auto set = [&](ListColumn column, const QVariant &value, int role) {
        m_model.setData(m_model.index(m_model.rowOfRecord(record), int(column)), value, role);
    };
    set(ListColumn::Reconsent, answer.date, Qt::EditRole);
    set(ListColumn::NextStart, answer.period.start, Qt::EditRole);
    set(ListColumn::NextEnd, answer.period.end, Qt::EditRole);
    set(ListColumn::Received, Qt::Checked, Qt::CheckStateRole);
}

QStringList AnswerDesk::questions(int consent, const ReConsent &answer) {
    const int record = recordOf(consent);
    enter(record, answer);
    QStringList questions = m_model.doubts(record);
    if (m_model.records().received(record))
        questions.append(whatStands(record) + u"を置き換えます。"_s);
    return questions;
}

AnswerOutcome AnswerDesk::record(int consent, const ReConsent &answer) {
    enter(recordOf(consent), answer);
    return write(recordOf(consent));
}

AnswerOutcome AnswerDesk::write(int record) {
    QString wrong;
    if (m_model.firstWrong(&wrong) >= 0)
        return {AnswerOutcome::Refused, wrong.section(u"\r\n"_s, 1)};
    const std::vector<TypedRow> typed = m_model.typedRows();
    if (typed.empty())
        return {AnswerOutcome::Refused, u"この内容はすでに登録されています。"_s};
    const Result<std::vector<size_t>> saved = saveRows(m_db, {typed.begin(), typed.end()}, {u"返事の入力"_s});
    if (!saved)
        return {AnswerOutcome::Failed, saved.reason()};
    m_overtaken.clear();
    for (const size_t i : *saved)
        m_overtaken.push_back(typed[i]);
    if (!m_overtaken.empty())
        return {AnswerOutcome::Overtaken};
    m_lastDay = m_model.values(record).reconsent;
    keep(m_model.changedRows(), record);
    return {};
}

Result<std::vector<MergeRow>> AnswerDesk::overtakenRows() {
    const Result<std::vector<StandingRow>> standing = readStandingRows(m_db, m_overtaken);
    if (!standing)
        return Failure{standing.reason()};
    m_standing = *standing;
    std::vector<MergeRow> rows;
    for (size_t i = 0; i < m_overtaken.size(); ++i)
        rows.push_back(mergeRow(m_overtaken[i], m_standing[i], {}));
    return rows;
}

AnswerOutcome AnswerDesk::recordMerged(int consent, const std::vector<MergeRow> &merged) {
    m_model.rebase(mergedEdits(merged, m_overtaken, m_standing));
    return m_model.hasChanges() ? write(recordOf(consent)) : leaveOvertaken();
}

AnswerOutcome AnswerDesk::leaveOvertaken() {
    const Result<> read = open(m_patient);
    return {AnswerOutcome::Overtaken, u"他の端末で変更されたため、登録していません。今の内容："_s +
                                          (read ? allThatStands(m_model.records()) : read.reason())};
}

// What was written is looked at once more for its update times, by which a colleague's change is known.
void AnswerDesk::keep(const std::vector<ChangedRow> &changed, int record) {
    const ConsentRowValues values = m_model.values(record);
    m_model.acceptChanges();
    RecordedAnswer recorded{m_patient, {}, {values.reconsent, {values.nextStart, values.nextEnd}}, {}, {}};
    QStringList kinds;
    std::vector<ReadRow> written;
    for (const ChangedRow &row : changed) {
        written.push_back(m_model.seenRow(row.record));
        const QString kind = treatmentText(m_patient.kind, m_model.records().isDeformity(row.record));
        row.record == record ? kinds.prepend(kind) : kinds.append(kind);
        if (row.record == record)
            recorded.before = stateText(row.read.values);
    }
    recorded.kind = kinds.join(u"・"_s);
    // Where they cannot be read, the values decide.
    (void)open(m_patient);
    for (size_t i = 0; i < changed.size(); ++i)
        recorded.back.push_back(wayBack(written[i], changed[i].read.values));
    m_recorded.push_back(std::move(recorded));
}

RowEdit AnswerDesk::wayBack(const ReadRow &written, const ConsentRowValues &before) const {
    for (const int record : m_records)
        if (const ReadRow now = m_model.records().row(record);
            now.key == written.key && now.values.same(written.values))
            return {now, before};
    return {written, before};
}

AnswerOutcome AnswerDesk::takeBack(size_t position) {
    RecordedAnswer &recorded = m_recorded[position];
    if (recorded.takenBack)
        return {AnswerOutcome::Refused, u"この返事は取り消し済みです。"_s};
    const Result<std::vector<size_t>> saved = saveRows(m_db, recorded.back, {u"返事の取消"_s});
    if (!saved)
        return {AnswerOutcome::Failed, saved.reason()};
    if (!saved->empty()) {
        Result<Recordset> rows = readAnswerRows(m_db, m_environment.branch, recorded.patient.number);
        return {AnswerOutcome::Overtaken,
                u"%1：登録した後に変更されているため、取り消していません。今の内容："_s.arg(
                    recorded.patient.who()) +
                    (rows ? allThatStands(ListRecords(std::move(*rows))) : rows.reason())};
    }
    recorded.takenBack = true;
    m_patients.update(recorded.patient.number, recorded.patient.consents);
    return {AnswerOutcome::Written,
            u"%1 %2 の返事を取り消しました。"_s.arg(recorded.patient.who(), recorded.kind)};
}
