#pragma once

#include "app/base/table_model.h"
#include "import/import_job.h"

/// The columns of a file and what each was taken for.
class ImportColumnsModel : public TableModel {
public:
    explicit ImportColumnsModel(QObject *parent);
    void load(const ImportJob *job);
    QVariant data(const QModelIndex &index, int role) const override;

private:
    int count() const override { return m_job ? int(m_job->columns.fields.size()) : 0; }

    const ImportJob *m_job = nullptr;
    QList<QStringList> m_examples; ///< of the first rows
};

/// What an import would do or did, a row of the file a line, those of one state alone when that is wanted.
class ImportTrialModel : public QAbstractTableModel {
public:
    enum Column { Line, State, Code, Name, What, firstOfFile };

    using QAbstractTableModel::QAbstractTableModel;
    void load(const ImportJob *job, ImportPlan plan);
    const ImportPlan &plan() const { return m_plan; }
    void showOnly(std::optional<PlannedRow::State> state);
    /// The next refused row behind a shown one, from the first again behind the last; −1 without any.
    int nextRefused(int shownRow) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void find();
    QString text(const PlannedRow &row, int column) const;

    const ImportJob *m_job = nullptr;
    ImportPlan m_plan;
    std::optional<PlannedRow::State> m_only;
    std::vector<size_t> m_shown;
};

/// 新規, 変更, 同じ, 取込不可.
QString plannedState(PlannedRow::State state);
