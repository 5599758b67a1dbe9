#include "export/grid_table.h"

#include <QAbstractItemModel>

using namespace Qt::Literals::StringLiterals;

namespace {

QString cellText(const QModelIndex &cell) {
    if (const QVariant text = cell.data(fileTextRole); text.isValid())
        return text.toString();
    if (const QVariant text = cell.data(); text.isValid())
        return text.toString();
    return cell.data(Qt::CheckStateRole) == Qt::Checked ? u"○"_s : QString();
}

bool isRight(const QAbstractItemModel &model, int column) {
    return model.rowCount() > 0 &&
           model.index(0, column).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight;
}

} // namespace

QStringList GridTable::headings() const {
    QStringList texts;
    for (const Column &column : columns)
        texts.append(column.heading);
    return texts;
}

GridTable readTable(const QAbstractItemModel &model, std::span<const int> columns) {
    GridTable table;
    for (const int column : columns)
        table.columns.push_back(
            {model.headerData(column, Qt::Horizontal).toString(), isRight(model, column)});
    table.rows.resize(size_t(model.rowCount()));
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList &texts = table.rows[size_t(row)];
        texts.reserve(qsizetype(columns.size()));
        for (const int column : columns)
            texts.append(cellText(model.index(row, column)));
    }
    return table;
}
