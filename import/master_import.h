#pragma once

#include "history/logged_transaction.h"
#include "import/import_job.h"
#include "import/import_query.h"
#include "masters/master_store.h"

#include <QSet>

/// The master behind a kind; care managers have none.
std::optional<MasterKind> masterOf(ImportKind kind);

/// Writes planned rows of a master or of patients, in the caller's transaction.
class MasterImport {
public:
    /// @param transaction the caller's, in which all is written
    MasterImport(const ImportJob &job, cT_ADODB &db, LoggedTransaction &transaction);

    /// Before the rows are read again: one import at a time, and nobody else writes the rows that are to
    /// change.
    Result<> lock(const ImportPlan &plan);

    /// Writes the rows that are new or changed, and gives new ones their numbers.
    Result<> write(ImportPlan &plan, const ImportProgress &progress);

    /// Refuses the rows whose texts the database has not kept; gives how many.
    Result<int> refuseLost(ImportPlan &plan);

private:
    Result<> execute(const QStringList &statements);
    Result<> watch(const ImportPlan &plan, PlannedRow::State state);
    Result<> giveNumbers(ImportPlan &plan);
    Result<> insert(const ImportPlan &plan, bool sub, const ImportProgress &progress);
    Result<> insertBesidePatients(const ImportPlan &plan, const ImportProgress &progress);
    QStringList updates(const PlannedRow &row) const;
    bool isRepeated(const PlannedRow &row) const;
    Result<> updateCopied(const PlannedRow &row);
    bool isInSub(const QString &column) const { return m_subColumns.contains(column); }
    RowToWrite part(const PlannedRow &row, bool sub) const;

    const ImportJob &m_job;
    const ImportDescription &m_description;
    cT_ADODB &m_db;
    LoggedTransaction &m_transaction;
    QSet<QString> m_subColumns;
};
