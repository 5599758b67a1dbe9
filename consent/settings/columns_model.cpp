#include "consent/settings/columns_model.h"

#include "app/base/text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

ColumnsModel::ColumnsModel(QObject *parent)
    : TableModel({{u"表示"_s}, {u"項目"_s}, {u"幅（半角）"_s}, {u"固定"_s}}, parent) {}

void ColumnsModel::load(const ColumnSettings &settings) {
    beginResetModel();
    m_settings = settings;
    endResetModel();
    Q_EMIT edited();
}

int ColumnsModel::shownCount() const {
    return int(std::ranges::count_if(m_settings.columns, &ColumnSettings::Column::shown));
}

void ColumnsModel::setFrozen(int columns) {
    m_settings.frozen = columns;
    changedAll();
}

bool ColumnsModel::move(int row, int by) {
    if (row < 0 || row + by < 0 || row + by >= rowCount())
        return false;
    std::swap(m_settings.columns[size_t(row)], m_settings.columns[size_t(row + by)]);
    changedAll();
    return true;
}

void ColumnsModel::changedAll() {
    allChanged();
    Q_EMIT edited();
}

bool ColumnsModel::isFrozen(int row) const {
    const auto first = m_settings.columns.begin();
    return m_settings.columns[size_t(row)].shown && std::count_if(first, first + row, [](const auto &column) {
                                                        return column.shown;
                                                    }) < m_settings.frozen;
}

QVariant ColumnsModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const ColumnSettings::Column &column = m_settings.columns[size_t(index.row())];
    const bool text = role == Qt::DisplayRole || role == Qt::EditRole;
    switch (index.column()) {
    case Shown:
        return role == Qt::CheckStateRole ? QVariant(column.shown ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Name:
        return text ? QVariant(listItemName(column.column)) : QVariant();
    case Width:
        if (role == Qt::TextAlignmentRole)
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        return text ? QVariant(column.width) : QVariant();
    case Frozen:
        return text && isFrozen(index.row()) ? QVariant(u"固定"_s) : QVariant();
    }
    return {};
}

Qt::ItemFlags ColumnsModel::flags(const QModelIndex &index) const {
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return index.column() == Shown   ? flags | Qt::ItemIsUserCheckable
           : index.column() == Width ? flags | Qt::ItemIsEditable
                                     : flags;
}

bool ColumnsModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (!index.isValid())
        return false;
    ColumnSettings::Column &column = m_settings.columns[size_t(index.row())];
    if (index.column() == Shown && role == Qt::CheckStateRole)
        column.shown = value.toInt() == Qt::Checked;
    else if (index.column() == Width && role == Qt::EditRole)
        column.width = std::clamp(toHalfWidth(value.toString()).toInt(), ColumnSettings::narrowest,
                                  ColumnSettings::widest);
    else
        return false;
    changedAll();
    return true;
}
