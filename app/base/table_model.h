#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QString>

/// What the models of plain grids share: their headings, how many rows and columns there are, and what views
/// are told of changes.
class TableModel : public QAbstractTableModel {
public:
    struct Heading {
        QString caption;
        QString hint{}; ///< shown as a tip
    };

    TableModel(const QList<Heading> &headings, QObject *parent)
        : QAbstractTableModel(parent), m_headings(headings) {}

    int rowCount(const QModelIndex &parent = {}) const final { return parent.isValid() ? 0 : count(); }
    int columnCount(const QModelIndex &parent = {}) const final {
        return parent.isValid() ? 0 : int(m_headings.size());
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const final;

protected:
    /// How many rows there are.
    virtual int count() const = 0;

    void rowChanged(int row) { Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1)); }
    void columnsChanged(int first, int last);
    void allChanged() { columnsChanged(0, columnCount() - 1); }

private:
    QList<Heading> m_headings;
};
