#include "consent/merge/merge_model.h"

#include <QFont>

using namespace Qt::Literals::StringLiterals;

namespace {

// A mark beside the text: whoever sees no bold sees it, and it is read out.
QString marked(bool differs, const QString &text) {
    return differs ? u"● "_s + text : text;
}

QVariant bold() {
    QFont font;
    font.setBold(true);
    return font;
}

} // namespace

MergeRowsModel::MergeRowsModel(const std::vector<MergeRow> &rows, QObject *parent)
    : TableModel({{u"利用者"_s}, {u"状態"_s}}, parent), m_rows(rows) {}

QString MergeRowsModel::state(const MergeRow &row) const {
    if (!row.gone.isEmpty())
        return row.gone;
    if (!row.isDecided())
        return u"選んでください"_s;
    return row.collides() ? u"選択済み"_s : u"重なりなし"_s;
}

QVariant MergeRowsModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const MergeRow &row = m_rows[size_t(index.row())];
    if (role == Qt::FontRole)
        return index.column() == 1 && (!row.isDecided() || !row.gone.isEmpty()) ? bold() : QVariant();
    if (role != Qt::DisplayRole)
        return {};
    return index.column() == 0 ? row.who : state(row);
}

MergeColumnsModel::MergeColumnsModel(QObject *parent)
    : TableModel({{u"項目"_s},
                  {u"読んだとき"_s, u"一覧に読み込んだときの内容"_s},
                  {u"他のＰＣ"_s, u"いまデータベースにある内容"_s},
                  {u"入力"_s, u"この画面で入力した内容"_s},
                  {u"保存する内容"_s, u"Space で、他のＰＣと入力を切り替えます"_s}},
                 parent) {}

void MergeColumnsModel::show(const MergeRow &row) {
    beginResetModel();
    m_row = &row;
    endResetModel();
}

QString MergeColumnsModel::text(const MergeColumn &column, int shown) const {
    switch (shown) {
    case Caption:
        return column.caption;
    case Read:
        return column.read;
    case Theirs:
        return marked(column.isWritten, column.theirs);
    case Typed:
        return marked(column.isTyped, column.typed);
    default:
        return column.taken == MergeColumn::Undecided ? u"？ 選んでください"_s : column.result();
    }
}

QVariant MergeColumnsModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const MergeColumn &column = m_row->columns[size_t(index.row())];
    if (role == Qt::FontRole) {
        const bool differs = (index.column() == Theirs && column.isWritten) ||
                             (index.column() == Typed && column.isTyped) || index.column() == Result;
        return differs ? bold() : QVariant();
    }
    if (role == Qt::DisplayRole)
        return text(column, index.column()).remove(u'\r').replace(u'\n', u' ');
    return {};
}
