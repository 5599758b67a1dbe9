#include "widgets/pick_list_model.h"

#include "app/base/text.h"

#include <QCollator>
#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <iterator>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QChar RowEnd = u'\n';
constexpr QChar CellEnd = u'\t';

// Where a typed word is found, the best place first.
enum Rank { wholeCode, codeStart, nameStart, inName, elsewhere, ranks };

bool breaksLine(QChar c) {
    return c == RowEnd || c == CellEnd || c == u'\r';
}

// Blanks and hyphens, of whichever width, once they are folded.
bool isNoise(QChar c) {
    return c == u' ' || c == u'-';
}

} // namespace

void PickListModel::setColumns(const QList<PickListColumn> &columns, const QString &codeField,
                               const QString &nameField) {
    beginResetModel();
    m_columns = columns;
    m_codeField = codeField;
    m_nameField = nameField;
    m_isName.clear();
    for (const PickListColumn &column : columns)
        m_isName.push_back(column.name || column.field == nameField);
    endResetModel();
}

void PickListModel::setRows(Recordset rows) {
    beginResetModel();
    m_rows = std::move(rows);
    m_positions.clear();
    for (const PickListColumn &column : m_columns)
        m_positions.push_back(m_rows.column(column.field));
    foldRows();
    orderRows();
    showMatches();
    endResetModel();
}

void PickListModel::narrow(const QString &typed, const QString &codeStart) {
    QStringList words;
    for (const QString &word : typed.split(QRegularExpression(u"[\\s\u3000]+"_s), Qt::SkipEmptyParts)) {
        if (const QString folded = foldForSearch(word).removeIf(isNoise); !folded.isEmpty())
            words.append(folded);
    }
    beginResetModel();
    m_words = words;
    m_codeStart = codeStart;
    const QString alone = typed.trimmed();
    m_typedNumber = !alone.isEmpty() && std::ranges::all_of(alone, [](QChar c) { return c.isDigit(); });
    showMatches();
    endResetModel();
}

CodeName PickListModel::at(int shownRow) const {
    if (shownRow < 0 || shownRow >= rowCount())
        return {};
    const int row = sourceRow(shownRow);
    return {m_rows.text(row, m_rows.column(m_codeField)), m_rows.text(row, m_rows.column(m_nameField))};
}

int PickListModel::rowOfCode(const QString &code) const {
    const int position = m_rows.column(m_codeField);
    const auto found =
        std::ranges::find_if(m_shown, [&](int row) { return m_rows.text(row, position) == code; });
    return found == m_shown.end() ? -1 : int(found - m_shown.begin());
}

int PickListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_shown.size());
}

int PickListModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant PickListModel::data(const QModelIndex &index, int role) const {
    const size_t column = size_t(index.column());
    if (role == Qt::TextAlignmentRole && m_columns.at(index.column()).number)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole || m_positions.at(column) < 0)
        return {};
    return m_rows.text(sourceRow(index.row()), m_positions.at(column));
}

QVariant PickListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= m_columns.size())
        return {};
    if (role == Qt::TextAlignmentRole && m_columns.at(section).number)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? m_columns.at(section).caption : QVariant();
}

void PickListModel::sort(int column, Qt::SortOrder order) {
    beginResetModel();
    m_sortColumn = column < columnCount() ? column : -1;
    m_sortOrder = order;
    orderRows();
    showMatches();
    endResetModel();
}

// All rows are folded in one call: the conversion costs far more to start than to run.
void PickListModel::foldRows() {
    QString all;
    const int code = m_rows.column(m_codeField);
    const auto add = [&](int row, int position) {
        if (position >= 0)
            all += m_rows.text(row, position).removeIf(breaksLine);
        all += CellEnd;
    };
    for (int row = 0; row < m_rows.rowCount(); ++row) {
        add(row, code);
        for (const int position : m_positions)
            add(row, position);
        all += RowEnd;
    }
    m_folded = foldForSearch(all).removeIf(isNoise);
    m_spans.clear();
    m_spans.reserve(size_t(m_rows.rowCount()));
    for (qsizetype begin = 0, end = 0; (end = m_folded.indexOf(RowEnd, begin)) >= 0; begin = end + 1)
        m_spans.push_back({begin, end - begin});
    Q_ASSERT(m_spans.size() == size_t(m_rows.rowCount()));
}

void PickListModel::orderRows() {
    m_order.resize(size_t(m_rows.rowCount()));
    std::iota(m_order.begin(), m_order.end(), 0);
    const int position = m_sortColumn < 0 ? -1 : m_positions.at(size_t(m_sortColumn));
    if (position < 0)
        return;
    const bool down = m_sortOrder == Qt::DescendingOrder;
    const auto sortBy = [&](const auto &keys) {
        std::stable_sort(m_order.begin(), m_order.end(), [&](int a, int b) {
            return down ? keys[size_t(b)] < keys[size_t(a)] : keys[size_t(a)] < keys[size_t(b)];
        });
    };
    if (m_columns.at(m_sortColumn).number) {
        std::vector<qint64> keys;
        for (const int row : m_order)
            keys.push_back(m_rows.number(row, position));
        sortBy(keys);
    } else {
        const QCollator collator(QLocale(QLocale::Japanese, QLocale::Japan));
        std::vector<QCollatorSortKey> keys;
        for (const int row : m_order)
            keys.push_back(collator.sortKey(m_rows.text(row, position)));
        sortBy(keys);
    }
}

void PickListModel::showMatches() {
    std::array<std::vector<int>, ranks> found;
    for (const int row : m_order)
        if (matches(row))
            found[size_t(m_words.isEmpty() ? wholeCode : rank(row))].push_back(row);
    m_codeTyped = !m_words.isEmpty() && !found[wholeCode].empty();
    m_shown.clear();
    for (const std::vector<int> &rows : found)
        m_shown.insert(m_shown.end(), rows.begin(), rows.end());
}

bool PickListModel::matches(int row) const {
    const QStringView texts = foldedRow(row);
    return texts.startsWith(m_codeStart) &&
           std::ranges::all_of(m_words, [&](const QString &word) { return texts.contains(word); });
}

// Of several words a code counts for itself; names are often typed with a blank inside.
int PickListModel::rank(int row) const {
    const QStringView texts = foldedRow(row);
    int best = rank(texts, m_words.join(QString())), worst = wholeCode;
    for (const QString &word : m_words) {
        const int one = rank(texts, word);
        best = one == wholeCode ? one : best;
        worst = qMax(worst, one);
    }
    return qMin(best, worst);
}

int PickListModel::rank(QStringView texts, const QString &word) const {
    const qsizetype codeEnd = texts.indexOf(CellEnd);
    if (texts.first(codeEnd).startsWith(word))
        return codeEnd == word.size() ? wholeCode : codeStart;
    int best = elsewhere;
    qsizetype begin = codeEnd + 1;
    for (const bool isName : m_isName) {
        const qsizetype end = texts.indexOf(CellEnd, begin);
        const qsizetype at = isName ? texts.sliced(begin, end - begin).indexOf(word) : -1;
        if (at >= 0)
            best = qMin(best, int(at == 0 ? nameStart : inName));
        begin = end + 1;
    }
    return best;
}
