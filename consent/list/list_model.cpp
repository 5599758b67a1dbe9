#include "consent/list/list_model.h"

#include "app/base/dates.h"
#include "consent/rules/plausibility.h"
#include "export/grid_table.h"

#include <QSet>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Apart from the caption that stands on the button while there are none.
QString ownMethods(const ListRow &row) {
    return row.mayOwnMethods() ? row.values.ownRequest : QString();
}

} // namespace

void ConsentListModel::take(Recordset rows, const ListContext &context) {
    m_looked.reset();
    m_context = context;
    m_records = ListRecords(std::move(rows));
    m_entries.forget();
    m_letters.clear();
    m_narrowing.forget();
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

std::vector<TypedRow> ConsentListModel::reload(Recordset rows, const ListContext &context) {
    const KeptEntries kept = m_entries.kept();
    beginResetModel();
    take(std::move(rows), context);
    std::vector<TypedRow> dropped = m_entries.takeOver(kept);
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

const ListRow &ConsentListModel::looked(int record) const {
    if (!m_looked || m_looked->record != record)
        m_looked.emplace(row(record));
    return *m_looked;
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
    return m_entries.targetCount() - int(targetRecords().size());
}

void ConsentListModel::tickTargets(const std::vector<ConsentRowKey> &keys) {
    QSet<QString> wanted;
    for (const ConsentRowKey &key : keys)
        wanted.insert(rowIdentity(key));
    for (int record = 0; record < m_records.count() && !wanted.isEmpty(); ++record)
        if (wanted.contains(rowIdentity(m_records.key(record))) && !m_states.isAside(record))
            m_entries.tickTarget(record);
    changedAll();
}

std::vector<int> ConsentListModel::receivedRecords() const {
    std::vector<int> records;
    for (const int record : m_shown)
        if (edits().marks(record).received)
            records.push_back(record);
    return records;
}

int ConsentListModel::receivedOutOfSight() const {
    int all = 0;
    for (int record = 0; record < m_records.count(); ++record)
        all += edits().marks(record).received && (edits().isTouched(record) || !m_states.isAside(record));
    return all - int(receivedRecords().size());
}

void ConsentListModel::dropChanges() {
    m_entries.drop();
    changedAll();
}

void ConsentListModel::acceptChanges() {
    m_entries.accept();
    changedAll();
}

std::vector<TypedRow> ConsentListModel::retype(const std::vector<TypedRow> &rows) {
    std::vector<TypedRow> left = m_entries.takeOver({rows, {}, {}, {}});
    changedAll();
    return left;
}

void ConsentListModel::rebase(const std::vector<RowEdit> &rows) {
    const QHash<QString, int> records = recordsByRow(m_records);
    for (const RowEdit &row : rows)
        if (const int record = records.value(rowIdentity(row.read.key), -1); record >= 0)
            m_entries.rebase(record, row.read, row.now);
    changedAll();
}

void ConsentListModel::changedAll() {
    m_looked.reset();
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
    const ConsentRowValues before = edits().stored(record);
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
    m_looked.reset();
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

void ConsentListModel::tick(const std::vector<int> &records, ListColumn column, bool on) {
    changed(m_entries.tick(records, column, on));
}

bool ConsentListModel::allTicked(const std::vector<int> &records, ListColumn column) const {
    return std::all_of(records.begin(), records.end(), [&](int record) {
        if (!m_entries.mayEdit(record, column))
            return true;
        if (column == ListColumn::Target)
            return isTarget(record);
        if (column == ListColumn::Received)
            return edits().marks(record).received;
        ConsentRowValues now = values(record);
        return *tickOf(now, column) != 0;
    });
}

UndoneStep ConsentListModel::undo() {
    return told(m_entries.undo());
}

UndoneStep ConsentListModel::redo() {
    return told(m_entries.redo());
}

bool ConsentListModel::restore(const std::vector<int> &records) {
    return changed(m_entries.restore(records));
}

UndoneStep ConsentListModel::told(const ListStep *step) {
    if (!changed(step))
        return {};
    const std::vector<int> records = step->records();
    const PatientKey patient = m_records.key(records.front()).patient;
    const bool ofOne = std::all_of(records.begin(), records.end(),
                                   [&](int record) { return m_records.key(record).patient == patient; });
    const QString rows = ofOne ? u"（%1）"_s.arg(who(records.front())) : u" %L1 行"_s.arg(records.size());
    return {ofOne ? records.back() : records.front(), step->what + rows};
}

// Shows what a step has changed. False: there was none.
bool ConsentListModel::changed(const ListStep *step) {
    constexpr size_t few = 20;
    if (step && step->edits.size() + step->targets.size() > few) {
        changedAll();
    } else if (step) {
        for (const int record : step->records())
            changedRow(record);
        Q_EMIT stateChanged();
    }
    if (const QString trouble = m_entries.takeTrouble(); !trouble.isEmpty())
        Q_EMIT troubled(trouble);
    return step != nullptr;
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
            return looked(record).text(column);
        ConsentRowValues now = looked(record).values;
        if (role == Qt::EditRole)
            return cellEditValue(now, column);
        return *tickOf(now, column) != 0 ? Qt::Checked : Qt::Unchecked;
    }
    case Qt::AccessibleTextRole: // a tick has no other text to be read out
        if (info.kind != CellKind::Tick)
            return {};
        return data(index, Qt::CheckStateRole) == Qt::Checked ? u"チェックあり"_s : u"チェックなし"_s;
    case Qt::ToolTipRole:
        return toolTip(record, column);
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (info.kind == CellKind::Number ? Qt::AlignRight : Qt::AlignLeft));
    case UrgencyRole:
        return int(urgencyIn(m_context, m_records.date(record, ListField::PeriodEnd)));
    case EditedRole:
        return edits().isEdited(record, column);
    case fileTextRole:
        return info.kind == CellKind::Button ? QVariant(ownMethods(looked(record))) : QVariant();
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
    if (!m_entries.mayEdit(recordOfRow(index.row()), ListColumn(index.column())))
        return flags;
    return flags |
           (listColumn(index.column()).kind == CellKind::Tick ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool ConsentListModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (!index.isValid() || !flags(index).testAnyFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEditable))
        return false;
    const int record = recordOfRow(index.row());
    const auto column = ListColumn(index.column());
    const bool isTick = listColumn(index.column()).kind == CellKind::Tick;
    if (isTick != (role == Qt::CheckStateRole))
        return false;
    bool taken = true;
    changed(isTick ? m_entries.tick({record}, column, value.toInt() == Qt::Checked)
                   : m_entries.set(record, column, value, &taken));
    if (listColumn(index.column()).kind == CellKind::Date)
        if (const QStringList doubtful = doubts(record); !doubtful.isEmpty())
            Q_EMIT doubted(who(record) + u"　"_s + doubtful.join(u'　'));
    return taken;
}

void ConsentListModel::changedRow(int record) {
    m_looked.reset();
    if (const int row = rowOfRecord(record); row >= 0)
        Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}
