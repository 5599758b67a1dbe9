#include "consent/batches/batches_model.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString countText(qint32 count) {
    return count == 0 ? QString() : u"%L1"_s.arg(count);
}

QString stateText(const BatchInfo &batch) {
    QStringList parts;
    if (batch.takesBack)
        parts += u"処理%1 の取消"_s.arg(*batch.takesBack);
    if (batch.takenBackBy)
        parts += (batch.partly ? u"処理%1 で一部取消"_s : u"処理%1 で取消"_s).arg(*batch.takenBackBy);
    return parts.join(u"、"_s);
}

struct Column {
    TableModel::Heading heading;
    QString (*text)(const BatchInfo &batch);
    bool isNumber = false;
};

const QList<Column> &columns() {
    using B = const BatchInfo &;
    static const QList<Column> all{
        {{u"処理番号"_s}, [](B batch) { return QString::number(batch.number); }, true},
        {{u"日時"_s}, [](B batch) { return batch.time; }},
        {{u"ＰＣ"_s}, [](B batch) { return batch.computer; }},
        {{u"処理"_s}, [](B batch) { return batch.kind; }},
        {{u"件数"_s, u"対象になった同意の件数です"_s}, [](B batch) { return countText(batch.rows); }, true},
        {{u"文書"_s, u"出力した文書の数です"_s}, [](B batch) { return countText(batch.documents); }, true},
        {{u"ページ"_s, u"出力したページの数です"_s}, [](B batch) { return countText(batch.pages); }, true},
        {{u"取消"_s, u"この処理を取り消した処理、または、この処理が取り消した処理です"_s}, stateText}};
    return all;
}

QList<TableModel::Heading> headings() {
    QList<TableModel::Heading> headings;
    for (const Column &column : columns())
        headings.append(column.heading);
    return headings;
}

} // namespace

BatchesModel::BatchesModel(QObject *parent) : TableModel(headings(), parent) {}

void BatchesModel::show(std::vector<BatchInfo> batches) {
    beginResetModel();
    m_batches = std::move(batches);
    endResetModel();
}

const BatchInfo *BatchesModel::at(int row) const {
    return row >= 0 && row < count() ? &m_batches[size_t(row)] : nullptr;
}

int BatchesModel::rowOf(qint32 number) const {
    const auto found = std::ranges::find(m_batches, number, &BatchInfo::number);
    return found == m_batches.end() ? -1 : int(found - m_batches.begin());
}

QVariant BatchesModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const Column &column = columns()[index.column()];
    if (role == Qt::TextAlignmentRole && column.isNumber)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? QVariant(column.text(m_batches[size_t(index.row())])) : QVariant();
}
