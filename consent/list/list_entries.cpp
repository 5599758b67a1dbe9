#include "consent/list/list_entries.h"

#include "consent/list/list_states.h"

#include <algorithm>
#include <ranges>

using namespace Qt::Literals::StringLiterals;

namespace {

void setNext(ConsentRowValues &values, const Period &next) {
    values.nextStart = next.start;
    values.nextEnd = next.end;
}

} // namespace

int ListEntries::targetCount() const {
    return int(std::count(m_target.begin(), m_target.end(), true));
}

std::vector<ConsentRowKey> ListEntries::targetKeys() const {
    std::vector<ConsentRowKey> keys;
    for (int record = 0; record < m_records.count(); ++record)
        if (isTarget(record))
            keys.push_back(m_records.key(record));
    return keys;
}

bool ListEntries::mayEdit(int record, ListColumn column) const {
    if (column == ListColumn::Target)
        return true;
    if (m_context.readOnly || !listColumn(int(column)).editable)
        return false;
    // A deformity-correction row has no contact mark, addressee, method and remark of its own.
    const bool massageOnly = column == ListColumn::Contact || column == ListColumn::ToHospital ||
                             column == ListColumn::ToDoctor || column == ListColumn::Method ||
                             column == ListColumn::Remark;
    return !(massageOnly && m_records.isDeformity(record));
}

void ListEntries::setValues(int record, const ConsentRowValues &now) {
    m_undo.edited(record, m_edits.values(record), now);
    m_edits.set(record, now);
}

void ListEntries::setTarget(int record, bool on) {
    if (isTarget(record) == on)
        return;
    m_undo.ticked(record, on);
    m_target[size_t(record)] = on;
}

void ListEntries::setTick(int record, ListColumn column, bool on) {
    if (column == ListColumn::Target) {
        setTarget(record, on);
        return;
    }
    ConsentRowValues now = m_edits.values(record);
    Nullable<short> &tick = *tickOf(now, column);
    if ((tick != 0) == on)
        return;
    tick = short(on ? 1 : 0);
    if (column == ListColumn::Received && on && !now.reconsent.isValid())
        tickReceived(record, now);
    setValues(record, now);
}

// A tick brings a date with it where one is proposed; a period that was typed before stays.
void ListEntries::tickReceived(int record, ConsentRowValues &now) {
    if (!m_context.advisor)
        return;
    const QDate proposed = m_context.advisor->reconsentDay(m_records.running(record));
    noteTrouble();
    if (!proposed.isValid())
        return;
    now.reconsent = proposed;
    if (!now.nextStart.isValid() && !now.nextEnd.isValid())
        setNext(now, propose(record, proposed).value_or(Period()));
    followMassage(record, {}, proposed);
}

const ListStep *ListEntries::set(int record, ListColumn column, const QVariant &value, bool *taken) {
    const ConsentRowValues before = m_edits.values(record);
    ConsentRowValues now = before;
    *taken = cellEditValue(now, column) == value || setCellValue(now, column, value);
    if (now.same(before))
        return nullptr;
    m_undo.begin(listColumn(int(column)).caption);
    if (column == ListColumn::Reconsent)
        takeReconsent(record, before.reconsent, now);
    setValues(record, now);
    return m_undo.end();
}

const ListStep *ListEntries::tick(const std::vector<int> &records, ListColumn column, bool on) {
    if (column == ListColumn::Received && on && m_context.advisor && records.size() > 1) {
        std::vector<PatientKey> patients;
        for (const int record : records)
            patients.push_back(m_records.key(record).patient);
        m_context.advisor->prepare(patients);
    }
    m_undo.begin(listColumn(int(column)).caption);
    for (const int record : records)
        if (mayEdit(record, column))
            setTick(record, column, on);
    return m_undo.end();
}

const ListStep *ListEntries::restore(const std::vector<int> &records) {
    m_undo.begin(u"行を元に戻す"_s);
    for (const int record : records)
        setValues(record, m_edits.stored(record));
    return m_undo.end();
}

const ListStep *ListEntries::undo() {
    const ListStep *step = m_undo.back();
    if (!step)
        return nullptr;
    for (const ListStep::Edit &edit : std::views::reverse(step->edits))
        m_edits.set(edit.record, edit.before);
    for (const ListStep::Target &target : step->targets)
        m_target[size_t(target.record)] = !target.on;
    return step;
}

const ListStep *ListEntries::redo() {
    const ListStep *step = m_undo.again();
    if (!step)
        return nullptr;
    for (const ListStep::Edit &edit : step->edits)
        m_edits.set(edit.record, edit.after);
    for (const ListStep::Target &target : step->targets)
        m_target[size_t(target.record)] = target.on;
    return step;
}

void ListEntries::drop() {
    m_edits.drop();
    m_undo.forget();
}

void ListEntries::accept() {
    m_edits.accept();
    m_undo.forget();
}

void ListEntries::forget() {
    m_edits.forget();
    m_undo.forget();
    m_target.assign(size_t(m_records.count()), false);
    m_deformity.reset();
}

std::vector<TypedRow> ListEntries::typedRows() const {
    std::vector<TypedRow> rows;
    for (const ChangedRow &row : m_edits.changed())
        rows.push_back({row, m_records.who(row.record)});
    return rows;
}

void ListEntries::rebase(int record, const ReadRow &now, const ConsentRowValues &values) {
    m_edits.rebase(record, now, values);
    m_undo.forget();
}

KeptEntries ListEntries::kept() const {
    KeptEntries kept{typedRows(), targetKeys(), m_undo, {}};
    for (const ListStep &step : m_undo.steps())
        for (const int record : step.records())
            if (!kept.rowsOfSteps.contains(record))
                kept.rowsOfSteps.insert(record, m_edits.storedRow(record));
    return kept;
}

std::vector<TypedRow> ListEntries::takeOver(const KeptEntries &kept) {
    std::vector<TypedRow> dropped;
    if (kept.isEmpty())
        return dropped;
    const QHash<QString, int> now = recordsByRow(m_records);
    for (const ConsentRowKey &key : kept.targets)
        if (const int record = now.value(rowIdentity(key), -1); record >= 0)
            m_target[size_t(record)] = true;
    for (const TypedRow &edit : kept.edits) {
        const int record = now.value(rowIdentity(edit.read.key), -1);
        if (record >= 0 && !m_edits.isTouched(record) && isSameRow(m_records.row(record), edit.read))
            m_edits.set(record, edit.now);
        else
            dropped.push_back(edit);
    }
    takeOverSteps(kept, now);
    return dropped;
}

// Steps can be taken back while the rows that they changed are what they were then.
void ListEntries::takeOverSteps(const KeptEntries &kept, const QHash<QString, int> &now) {
    ListUndo undo = kept.undo;
    const auto follow = [&](int &record, bool mustBeSame) {
        const ReadRow &row = *kept.rowsOfSteps.constFind(record);
        record = now.value(rowIdentity(row.key), -1);
        return record >= 0 && (!mustBeSame || isSameRow(m_records.row(record), row));
    };
    for (ListStep &step : undo.steps()) {
        for (ListStep::Edit &edit : step.edits)
            if (!follow(edit.record, true))
                return;
        for (ListStep::Target &target : step.targets)
            if (!follow(target.record, false))
                return;
    }
    m_undo = std::move(undo);
}

// A new re-consent date proposes the next period, for the patient's deformity-correction rows too; taking the
// date away takes the period away. A period that was typed before there was a date stays where the rule gives
// none, and any where it cannot be reckoned.
void ListEntries::takeReconsent(int record, const QDate &before, ConsentRowValues &now) {
    const std::optional<Period> next = propose(record, now.reconsent);
    if (next && (next->start.isValid() || before.isValid()))
        setNext(now, *next);
    followMassage(record, before, now.reconsent);
}

std::vector<int> ListEntries::deformityRecords(const PatientKey &patient) {
    if (!m_deformity) {
        m_deformity.emplace();
        for (int record = 0; record < m_records.count(); ++record)
            if (m_records.isDeformity(record))
                (*m_deformity)[m_records.key(record).patient.nIDNo].push_back(record);
    }
    return m_deformity->value(patient.nIDNo);
}

// The patient's deformity-correction rows take the massage row's new re-consent date; their own dates and
// periods are proposed by it, not copied. A row with an answer of its own keeps it; a date that was taken
// away goes from the rows that took it here and were not saved with it.
void ListEntries::followMassage(int record, const QDate &before, const QDate &reconsent) {
    if (!m_context.advisor || !m_context.advisor->followsMassage() || m_records.isDeformity(record))
        return;
    for (const int other : deformityRecords(m_records.key(record).patient)) {
        if (m_states.isAside(other))
            continue;
        ConsentRowValues now = m_edits.values(other);
        const bool answered = now.reconsent.isValid() && now.reconsent != before;
        const bool saved = now.reconsent.isValid() && now.reconsent == m_edits.stored(other).reconsent;
        if (answered || now.reconsent == reconsent || (saved && !reconsent.isValid()))
            continue;
        const bool stays = keepsPeriod(other, now, reconsent);
        now.reconsent = reconsent;
        if (const std::optional<Period> next = propose(other, reconsent); next && !stays)
            setNext(now, *next);
        setValues(other, now);
    }
}

// A period that was typed before a followed date came stays, also when that date goes again.
bool ListEntries::keepsPeriod(int record, const ConsentRowValues &now, const QDate &reconsent) {
    const Period period{now.nextStart, now.nextEnd};
    if (!period.start.isValid() && !period.end.isValid())
        return false;
    return !now.reconsent.isValid() || (!reconsent.isValid() && propose(record, now.reconsent) != period);
}

std::optional<Period> ListEntries::propose(int record, const QDate &reconsent) {
    if (!reconsent.isValid() || !m_context.advisor)
        return Period();
    const Period next = m_context.advisor->nextPeriod(m_records.running(record), reconsent);
    noteTrouble();
    return m_context.advisor->failed() ? std::nullopt : std::optional(next);
}

void ListEntries::noteTrouble() {
    if (const QString trouble = m_context.advisor->trouble(); !trouble.isEmpty())
        m_trouble = trouble;
}
