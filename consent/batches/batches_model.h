#pragma once

#include "app/base/table_model.h"
#include "consent/batches/batches.h"

/// Runs as their grid shows them.
class BatchesModel : public TableModel {
public:
    explicit BatchesModel(QObject *parent = nullptr);

    void show(std::vector<BatchInfo> batches);
    /// Null for no row.
    const BatchInfo *at(int row) const;
    /// −1: not among them.
    int rowOf(qint32 number) const;

    QVariant data(const QModelIndex &index, int role) const override;

private:
    int count() const override { return int(m_batches.size()); }

    std::vector<BatchInfo> m_batches;
};
