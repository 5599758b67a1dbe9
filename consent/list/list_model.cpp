#include "consent/list/list_model.h"

#include "app/base/dates.h"
#include "consent/rules/plausibility.h"
#include "export/grid_table.h"

#include <QSet>
#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Apart from the caption that stands on the button while there are none.
QString ownMethods(const ListRow &row) {
    return row.mayOwnMethods() ? row.values.ownRequest : QString();
}

void setNext(ConsentRowValues &values, const Period &next) {
    values.nextStart = next.start;
    values.nextEnd = next.end;
}

} // namespace

void ConsentListModel::take(Recordset rows, const ListContext &context) {
    m_context = context;
    m_records = ListRecords(std::move(rows));
    m_edits.forget();
    m_target.assign(size_t(m_records.count()), false);
    m_letters.clear();
    m_narrowing.forget();
    m_deformity.reset();
    m_states.read(context);
}

void ConsentListModel::load(Recordset rows, const ListContext &context) {
    beginResetModel();
    take(std::move(rows), context);
    m_states.chooseAgain();
    show();
    endResetModel();
    toldLoaded();
}

void ConsentListModel::setToday(const QDate &today) {
    if (m_context.today == today)
        return;
    m_context.today = today;
    m_states.read(m_context);
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    Q_EMIT stateChanged();
}

QStringList ConsentListModel::reload(Recordset rows, const ListContext &context) {
    std::vector<ChangedRow> edits = changedRows();
    QStringList names;
    for (const ChangedRow &edit : edits)
        names.append(who(edit.record));
    const std::vector<ConsentRowKey> targets = targetKeys();

    beginResetModel();
    take(std::move(rows), context);
    QHash<QString, int> now;
    if (!edits.empty() || !targets.empty())
        for (int record = 0; record < m_records.count(); ++record)
            now.insert(rowIdentity(m_records.key(record)), record);
    for (const ConsentRowKey &key : targets)
        if (const int record = now.value(rowIdentity(key), -1); record >= 0)
            m_target[size_t(record)] = true;
    QStringList dropped;
    for (size_t i = 0; i < edits.size(); ++i) {
        const int record = now.value(rowIdentity(edits[i].read.key), -1);
        if (record >= 0 && isSameRow(m_records.row(record), edits[i].read))
            m_edits.set(record, edits[i].now);
        else
            dropped.append(names[qsizetype(i)] + typedText(edits[i]));
    }
    m_states.chooseAgain();
    show();
    endResetModel();
    toldLoaded();
    return dropped;
}

// The header's order by kinds of letters needs them before the rows are seen.
void ConsentListModel::toldLoaded() {
    Q_EMIT stateChanged();
    Q_EMIT loaded();
    if (m_sortColumn == int(ListColumn::Letter) && !recordsWithoutLetter(1).empty())
        sort(m_sortColumn, m_sortOrder);
}

int ConsentListModel::rowOfRecord(int record) const {
    return m_rows[size_t(record)];
}

ListRow ConsentListModel::row(int record) const {
    std::optional<LetterKind> letter;
    if (size_t(record) < m_letters.size())
        letter = m_letters[size_t(record)];
    return {m_records, record, values(record), m_context, letter};
}

std::vector<ListRow> ConsentListModel::rows(const std::vector<int> &records) const {
    std::vector<ListRow> rows;
    rows.reserve(records.size());
    for (const int record : records)
        rows.push_back(row(record));
    return rows;
}

std::vector<int> ConsentListModel::targetRecords() const {
    std::vector<int> records;
    for (const int record : m_shown)
        if (isTarget(record))
            records.push_back(record);
    return records;
}

int ConsentListModel::targetsOutOfSight() const {
    return int(std::count(m_target.begin(), m_target.end(), true)) - int(targetRecords().size());
}

std::vector<ConsentRowKey> ConsentListModel::targetKeys() const {
    std::vector<ConsentRowKey> keys;
    for (int record = 0; record < m_records.count(); ++record)
        if (isTarget(record))
            keys.push_back(m_records.key(record));
    return keys;
}

void ConsentListModel::tickTargets(const std::vector<ConsentRowKey> &keys) {
    QSet<QString> wanted;
    for (const ConsentRowKey &key : keys)
        wanted.insert(rowIdentity(key));
    for (int record = 0; record < m_records.count() && !wanted.isEmpty(); ++record)
        if (wanted.contains(rowIdentity(m_records.key(record))))
            m_target[size_t(record)] = true;
    changedAll();
}

std::vector<int> ConsentListModel::receivedRecords() const {
    std::vector<int> records;
    for (const int record : m_shown)
        if (m_edits.marks(record).received)
            records.push_back(record);
    return records;
}

int ConsentListModel::receivedOutOfSight() const {
    int all = 0;
    for (int record = 0; record < m_records.count(); ++record)
        all += m_edits.marks(record).received && !m_states.isAside(record);
    return all - int(receivedRecords().size());
}

void ConsentListModel::dropChanges() {
    m_edits.drop();
    changedAll();
}

void ConsentListModel::acceptChanges() {
    m_edits.accept();
    dropChanges();
}

void ConsentListModel::changedAll() {
    if (!m_shown.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    Q_EMIT stateChanged();
}

int ConsentListModel::firstWrong(QString *why) const {
    for (const ChangedRow &row : changedRows()) {
        if (!row.now.nextStart.isValid() || !row.now.nextEnd.isValid() ||
            row.now.nextStart <= row.now.nextEnd)
            continue;
        *why =
            who(row.record) +
            u"\r\n要加療終了が要加療開始より前の日付です。要加療開始、要加療終了を入力しなおしてください。"_s;
        return row.record;
    }
    return -1;
}

QStringList ConsentListModel::doubts(int record) const {
    const ConsentRowValues now = values(record);
    const ConsentRowValues before = m_edits.stored(record);
    if (now.reconsent == before.reconsent && now.nextStart == before.nextStart &&
        now.nextEnd == before.nextEnd)
        return {};
    const RunningConsent running = m_records.running(record);
    QDate ruledEnd;
    if (m_context.advisor && now.reconsent.isValid())
        ruledEnd = m_context.advisor->nextPeriod(running, now.reconsent).end;
    return doubtsOf(
        {u"再同意日"_s, now.reconsent, {now.nextStart, now.nextEnd}, running.consentDay, ruledEnd},
        m_context.today);
}

void ConsentListModel::prepareNarrowing() {
    m_narrowing.prepare(m_records);
}

void ConsentListModel::narrow(const QString &name, const QString &kana) {
    if (m_narrowing.set(name, kana))
        showAnew();
}

void ConsentListModel::showState(RowState state) {
    m_states.choose(state);
    showAnew();
}

void ConsentListModel::showAnew() {
    beginResetModel();
    show();
    endResetModel();
    Q_EMIT stateChanged();
}

int ConsentListModel::countOfList() const {
    int count = 0;
    for (int record = 0; record < m_records.count(); ++record)
        count += !m_states.isAside(record);
    return count;
}

// Works out which records are shown and in which order.
void ConsentListModel::show() {
    if (m_narrowing.isSet())
        prepareNarrowing();
    m_shown.clear();
    m_shown.reserve(size_t(m_records.count()));
    m_kept.assign(size_t(m_records.count()), true);
    for (int record = 0; record < m_records.count(); ++record) {
        if (m_narrowing.hides(record))
            m_kept[size_t(record)] = false;
        else if (!m_states.hides(record))
            m_shown.push_back(record);
    }
    if (m_sortColumn >= 0)
        orderRecords(
            m_shown, ListColumn(m_sortColumn), m_sortOrder == Qt::DescendingOrder,
            [this](int record) { return row(record); }, [this](int record) { return isTarget(record); });
    m_rows.assign(size_t(m_records.count()), -1);
    for (size_t row = 0; row < m_shown.size(); ++row)
        m_rows[size_t(m_shown[row])] = int(row);
}

std::vector<int> ConsentListModel::recordsWithoutLetter(size_t most) const {
    std::vector<int> records;
    // Letters are not written of the history.
    if (!m_context.readOnly)
        for (size_t record = m_letters.size(); record < size_t(m_records.count()) && records.size() < most;
             ++record)
            records.push_back(int(record));
    return records;
}

void ConsentListModel::setLetters(const std::vector<int> &records, const GivenConsents &consents) {
    for (const int record : records)
        m_letters.push_back(proposeLetterKind(consents.factsOf(m_records.key(record))));
    if (m_sortColumn == int(ListColumn::Letter) && m_letters.size() == size_t(m_records.count()))
        sort(m_sortColumn, m_sortOrder);
    else if (!m_shown.empty())
        Q_EMIT dataChanged(index(0, int(ListColumn::Letter)), index(rowCount() - 1, int(ListColumn::Letter)));
}

void ConsentListModel::sort(int column, Qt::SortOrder order) {
    if (column == int(ListColumn::Letter) && !recordsWithoutLetter(1).empty())
        Q_EMIT lettersWanted();
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<int> records;
    for (const QModelIndex &index : before)
        records.push_back(recordOfRow(index.row()));
    m_sortColumn = column;
    m_sortOrder = order;
    show();
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i)
        after.append(index(rowOfRecord(records[size_t(i)]), before[i].column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

bool ConsentListModel::mayEdit(int record, ListColumn column) const {
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

void ConsentListModel::setTick(int record, ListColumn column, bool on) {
    if (column == ListColumn::Target) {
        m_target[size_t(record)] = on;
        return;
    }
    ConsentRowValues now = values(record);
    Nullable<short> &tick = *tickOf(now, column);
    if ((tick != 0) == on)
        return;
    tick = short(on ? 1 : 0);
    if (column == ListColumn::Received && on && !now.reconsent.isValid())
        tickReceived(record, now);
    m_edits.set(record, now);
}

// A tick brings a date with it where one is proposed; a period that was typed before stays.
void ConsentListModel::tickReceived(int record, ConsentRowValues &now) {
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

void ConsentListModel::tickAll(ListColumn column, bool on) {
    if (column == ListColumn::Received && on && m_context.advisor) {
        std::vector<PatientKey> patients;
        for (const int record : m_shown)
            patients.push_back(m_records.key(record).patient);
        m_context.advisor->prepare(patients);
    }
    for (const int record : m_shown)
        if (mayEdit(record, column))
            setTick(record, column, on);
    changedAll();
    tellTrouble();
}

bool ConsentListModel::allTicked(ListColumn column) const {
    return std::all_of(m_shown.begin(), m_shown.end(), [&](int record) {
        if (!mayEdit(record, column))
            return true;
        ConsentRowValues now = values(record);
        return column == ListColumn::Target ? isTarget(record) : *tickOf(now, column) != 0;
    });
}

int ConsentListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_shown.size());
}

int ConsentListModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(ListColumn::Count);
}

QVariant ConsentListModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const int record = recordOfRow(index.row());
    const auto column = ListColumn(index.column());
    const ListColumnInfo &info = listColumn(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::CheckStateRole: {
        if ((role == Qt::CheckStateRole) != (info.kind == CellKind::Tick))
            return {};
        if (column == ListColumn::Target)
            return isTarget(record) ? Qt::Checked : Qt::Unchecked;
        if (role == Qt::DisplayRole || (role == Qt::EditRole && !info.editable))
            return row(record).text(column);
        ConsentRowValues now = values(record);
        if (role == Qt::EditRole)
            return cellEditValue(now, column);
        return *tickOf(now, column) != 0 ? Qt::Checked : Qt::Unchecked;
    }
    case Qt::ToolTipRole:
        return toolTip(record, column);
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (info.kind == CellKind::Number ? Qt::AlignRight : Qt::AlignLeft));
    case UrgencyRole:
        return int(urgencyIn(m_context, m_records.date(record, ListField::PeriodEnd)));
    case EditedRole:
        return m_edits.isEdited(record, column);
    case fileTextRole:
        return info.kind == CellKind::Button ? QVariant(ownMethods(row(record))) : QVariant();
    default:
        return {};
    }
}

QString ConsentListModel::toolTip(int record, ListColumn column) const {
    const ConsentRowValues now = values(record);
    if (m_context.advisor && (column == ListColumn::Period || column == ListColumn::ConsentEnd))
        return m_context.advisor->explainRunning(m_records.running(record));
    const bool next =
        column == ListColumn::Reconsent || column == ListColumn::NextStart || column == ListColumn::NextEnd;
    if (m_context.advisor && next && now.reconsent.isValid())
        return m_context.advisor->explainNext(m_records.running(record), now.reconsent,
                                              {now.nextStart, now.nextEnd});
    return {};
}

QVariant ConsentListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    if (section < 0 || section >= int(ListColumn::Count))
        return {};
    if (role == Qt::DisplayRole)
        return listColumn(section).caption;
    if (role == Qt::ToolTipRole)
        return listColumn(section).hint;
    return {};
}

Qt::ItemFlags ConsentListModel::flags(const QModelIndex &index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (!mayEdit(recordOfRow(index.row()), ListColumn(index.column())))
        return flags;
    return flags |
           (listColumn(index.column()).kind == CellKind::Tick ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool ConsentListModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (!index.isValid() || !mayEdit(recordOfRow(index.row()), ListColumn(index.column())))
        return false;
    const int record = recordOfRow(index.row());
    const auto column = ListColumn(index.column());
    const bool isTick = listColumn(index.column()).kind == CellKind::Tick;
    if (isTick != (role == Qt::CheckStateRole))
        return false;
    if (isTick) {
        setTick(record, column, value.toInt() == Qt::Checked);
    } else {
        const ConsentRowValues before = values(record);
        ConsentRowValues now = before;
        if (cellEditValue(now, column) == value)
            return true;
        if (!setCellValue(now, column, value))
            return false;
        if (column == ListColumn::Reconsent)
            takeReconsent(record, before.reconsent, now);
        m_edits.set(record, now);
    }
    changedRow(record);
    Q_EMIT stateChanged();
    tellTrouble();
    if (listColumn(index.column()).kind == CellKind::Date)
        if (const QStringList doubtful = doubts(record); !doubtful.isEmpty())
            Q_EMIT doubted(who(record) + u"　"_s + doubtful.join(u'　'));
    return true;
}

// A new re-consent date proposes the next period, for the patient's deformity-correction rows too; taking the
// date away takes the period away. A period that was typed before there was a date stays where the rule gives
// none, and any where it cannot be reckoned.
void ConsentListModel::takeReconsent(int record, const QDate &before, ConsentRowValues &now) {
    const std::optional<Period> next = propose(record, now.reconsent);
    if (next && (next->start.isValid() || before.isValid()))
        setNext(now, *next);
    followMassage(record, before, now.reconsent);
}

// Each trouble is told once, by the edit that met it.
void ConsentListModel::tellTrouble() {
    if (const QString trouble = std::exchange(m_trouble, {}); !trouble.isEmpty())
        Q_EMIT troubled(trouble);
}

void ConsentListModel::changedRow(int record) {
    if (const int row = rowOfRecord(record); row >= 0)
        Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

std::vector<int> ConsentListModel::deformityRecords(const PatientKey &patient) {
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
void ConsentListModel::followMassage(int record, const QDate &before, const QDate &reconsent) {
    if (!m_context.advisor || !m_context.advisor->followsMassage() || m_records.isDeformity(record))
        return;
    for (const int other : deformityRecords(m_records.key(record).patient)) {
        if (m_states.isAside(other))
            continue;
        ConsentRowValues now = values(other);
        const bool answered = now.reconsent.isValid() && now.reconsent != before;
        const bool saved = now.reconsent.isValid() && now.reconsent == m_edits.stored(other).reconsent;
        if (answered || now.reconsent == reconsent || (saved && !reconsent.isValid()))
            continue;
        const bool stays = keepsPeriod(other, now, reconsent);
        now.reconsent = reconsent;
        if (const std::optional<Period> next = propose(other, reconsent); next && !stays)
            setNext(now, *next);
        m_edits.set(other, now);
        changedRow(other);
    }
}

// A period that was typed before a followed date came stays, also when that date goes again.
bool ConsentListModel::keepsPeriod(int record, const ConsentRowValues &now, const QDate &reconsent) {
    const Period period{now.nextStart, now.nextEnd};
    if (!period.start.isValid() && !period.end.isValid())
        return false;
    return !now.reconsent.isValid() || (!reconsent.isValid() && propose(record, now.reconsent) != period);
}

std::optional<Period> ConsentListModel::propose(int record, const QDate &reconsent) {
    if (!reconsent.isValid() || !m_context.advisor)
        return Period();
    const Period next = m_context.advisor->nextPeriod(m_records.running(record), reconsent);
    noteTrouble();
    return m_context.advisor->failed() ? std::nullopt : std::optional(next);
}

void ConsentListModel::noteTrouble() {
    if (const QString trouble = m_context.advisor->trouble(); !trouble.isEmpty())
        m_trouble = trouble;
}
