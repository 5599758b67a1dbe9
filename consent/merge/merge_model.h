#pragma once

#include "app/base/table_model.h"
#include "consent/merge/merge.h"

/// The overtaken rows, one line each.
class MergeRowsModel : public TableModel {
public:
    explicit MergeRowsModel(const std::vector<MergeRow> &rows, QObject *parent = nullptr);
    QVariant data(const QModelIndex &index, int role) const override;
    void changed() { allChanged(); }

private:
    int count() const override { return int(m_rows.size()); }
    QString state(const MergeRow &row) const;

    const std::vector<MergeRow> &m_rows;
};

/// The columns of one of them side by side.
class MergeColumnsModel : public TableModel {
public:
    enum Column { Caption, Read, Theirs, Typed, Result };

    explicit MergeColumnsModel(QObject *parent = nullptr);
    /// @param row must outlive the model, or be replaced by another
    void show(const MergeRow &row);
    void changed() { allChanged(); }
    QVariant data(const QModelIndex &index, int role) const override;

private:
    int count() const override { return m_row ? int(m_row->columns.size()) : 0; }
    QString text(const MergeColumn &column, int shown) const;

    const MergeRow *m_row = nullptr;
};
