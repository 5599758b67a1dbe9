#include "app/base/table_model.h"

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    const Heading &heading = m_headings[section];
    if (role == Qt::DisplayRole)
        return heading.caption;
    return role == Qt::ToolTipRole && !heading.hint.isEmpty() ? QVariant(heading.hint) : QVariant();
}

void TableModel::columnsChanged(int first, int last) {
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, first), index(rowCount() - 1, last));
}
