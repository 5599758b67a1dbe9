#include "import/import_models.h"

#include "app/desktop/signal_colours.h"

using namespace Qt::Literals::StringLiterals;

ImportColumnsModel::ImportColumnsModel(QObject *parent)
    : TableModel({{u"列"_s}, {u"見出し"_s}, {u"取り込む項目"_s}, {u"内容の例"_s}}, parent) {}

void ImportColumnsModel::load(const ImportJob *job) {
    constexpr int rows = 5;
    beginResetModel();
    m_job = job;
    m_examples.clear();
    for (int row = job && job->columns.headed; job && row < job->file.rowCount() && row <= rows; ++row)
        m_examples += job->file.cells(row).texts;
    endResetModel();
}

QVariant ImportColumnsModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::BackgroundRole))
        return {};
    const int field = m_job->columns.fields[size_t(index.row())];
    if (role == Qt::BackgroundRole)
        return field < 0 ? QVariant(signalTint(Signal::Soon)) : QVariant();
    QStringList examples;
    for (const QStringList &row : m_examples)
        if (const QString text = row.value(index.row()); !text.isEmpty() && !examples.contains(text))
            examples += text;
    const QVariant cells[] = {index.row() + 1, m_job->columns.heading(index.row()),
                              field < 0 ? u"（取り込まない）"_s
                                        : m_job->description().fields[size_t(field)].caption,
                              examples.join(u"、"_s).left(60)};
    return cells[index.column()];
}

QString plannedState(PlannedRow::State state) {
    const QString states[] = {u"新規"_s, u"変更"_s, u"同じ"_s, u"取込不可"_s};
    return states[state];
}

void ImportTrialModel::load(const ImportJob *job, ImportPlan plan) {
    beginResetModel();
    m_job = job;
    m_plan = std::move(plan);
    find();
    endResetModel();
}

void ImportTrialModel::showOnly(std::optional<PlannedRow::State> state) {
    beginResetModel();
    m_only = state;
    find();
    endResetModel();
}

void ImportTrialModel::find() {
    m_shown.clear();
    for (size_t row = 0; row < m_plan.rows.size(); ++row)
        if (!m_only || m_plan.rows[row].state == *m_only)
            m_shown.push_back(row);
}

int ImportTrialModel::nextRefused(int shownRow) const {
    const int all = rowCount();
    for (int step = 1; step <= all; ++step)
        if (const int row = (std::max(shownRow, -1) + step) % all;
            m_plan.rows[m_shown[size_t(row)]].state == PlannedRow::Refused)
            return row;
    return -1;
}

int ImportTrialModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_shown.size());
}

int ImportTrialModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : firstOfFile + (m_job ? int(m_job->columns.fields.size()) : 0);
}

QString ImportTrialModel::text(const PlannedRow &row, int column) const {
    switch (column) {
    case Line:
        return QString::number(m_job->file.line(row.row));
    case State:
        return plannedState(row.state);
    case Code:
        return row.code.isEmpty() && row.state == PlannedRow::New ? u"（自動）"_s : row.code;
    case Name:
        return row.name;
    case What:
        return plannedText(row);
    default:
        return m_job->file.cells(row.row).texts.value(column - firstOfFile);
    }
}

QVariant ImportTrialModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const PlannedRow &row = m_plan.rows[m_shown[size_t(index.row())]];
    switch (role) {
    case Qt::DisplayRole:
        return text(row, index.column());
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter |
                        (index.column() == Line || index.column() == Code ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::BackgroundRole:
        if (index.column() >= firstOfFile)
            return {};
        return row.state == PlannedRow::Refused   ? QVariant(signalTint(Signal::Wrong))
               : row.state == PlannedRow::Changed ? QVariant(signalTint(Signal::Changed))
                                                  : QVariant();
    default:
        return {};
    }
}

QVariant ImportTrialModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    const QString own[] = {u"行"_s, u"結果"_s, u"番号"_s, u"氏名・名称"_s, u"理由・変わる項目"_s};
    return section < firstOfFile ? own[section] : m_job->columns.heading(section - firstOfFile);
}
