#pragma once

#include "app/base/result.h"
#include "db/adodb.h"
#include "history/operation.h"
#include "history/watched_tables.h"

#include <QSet>
#include <QStringView>
#include <vector>

/// A transaction that leaves a record of each row that it has changed: of the watched rows, what stood there
/// before and what stands there in the end. It rolls back unless it is committed. Where the database keeps no
/// history, it is a plain transaction.
class LoggedTransaction {
public:
    /// Opens a lost connection anew and begins; ask begun() whether it worked. Before the first write over a
    /// connection it sees to the tables of the log, in a transaction of their own.
    /// @param db the connection of the run; must outlive the object
    LoggedTransaction(cT_ADODB &db, Operation operation);

    bool begun() const { return m_transaction.begun() && m_settled; }
    /// What the connection has said since.
    QString said() const { return m_errors.text(); }

    /// Reads rows as they stand now: behind the lock that keeps others from writing them, before they are
    /// written.
    /// @param table one of watchedTables()
    /// @param where a condition that nothing written here makes true or false of another row; rows that are
    /// made or erased are found by it too
    Result<> watch(QStringView table, const QString &where);

    /// All columns of the rows as watch() has read them; read now where it has not.
    Result<Recordset> read(QStringView table, const QString &where);

    /// Records what differs from what was watched, and makes everything last. A record that cannot be
    /// written undoes all.
    Result<> commit();

private:
    struct Watched {
        const WatchedTable *table;
        QString sql;
        Recordset before;
    };

    Failure failure(const QString &otherwise = {}) const;
    Result<> record();
    Result<> collect(const Watched &watched);
    Result<> write();

    cT_ADODB &m_db;
    Operation m_operation;
    ErrorsSince m_errors;
    Transaction m_transaction;
    bool m_settled; ///< whether there is history is known
    std::vector<Watched> m_watched;
    QString m_id;
    QList<RowChange> m_waiting; ///< to be written together
    QSet<QString> m_recorded;   ///< two conditions may find the same row: the first one records it
    qsizetype m_written = 0;
};
