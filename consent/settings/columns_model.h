#pragma once

#include "app/base/table_model.h"
#include "consent/rows/column_settings.h"

/// The list's columns to be chosen, a row each in their order.
class ColumnsModel : public TableModel {
    Q_OBJECT
public:
    enum Column { Shown, Name, Width, Frozen };

    explicit ColumnsModel(QObject *parent = nullptr);

    void load(const ColumnSettings &settings);
    const ColumnSettings &settings() const { return m_settings; }
    /// How many columns are shown.
    int shownCount() const;
    void setFrozen(int columns);
    /// Puts a row one place up (−1) or down (1); false where there is none.
    bool move(int row, int by);

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

Q_SIGNALS:
    void edited();

private:
    int count() const override { return int(m_settings.columns.size()); }
    void changedAll();
    bool isFrozen(int row) const;

    ColumnSettings m_settings;
};
