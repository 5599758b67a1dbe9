#pragma once

#include "db/dialect/dialect.h"
#include "db/recordset.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

/// One error as the database's provider reports it.
struct ProviderError {
    qint32 number = 0; ///< the interface's error number, e.g. −2147467259
    QString description;
    QString source;
    QString sqlState;
    qint32 nativeError = 0;
};

/// What cT_ADODB needs of a database. Every operation gives false on failure and leaves the reasons in
/// errors(). A provider that finds its connection broken closes itself: isOpen() is then false.
class DbProvider {
public:
    virtual ~DbProvider() = default;

    virtual bool open(const QString &connectionString) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    virtual QString databaseName() const = 0;
    /// Whose SQL the database speaks; callers write SQL Server's all the same.
    virtual SqlDialect dialect() const { return SqlDialect::SqlServer; }

    /// Runs one statement in SQL Server's dialect that gives rows, and reads them all.
    virtual bool query(const QString &sql, Recordset &rows) = 0;
    /// Runs one statement; `affected`, when not null, takes the number of changed rows.
    virtual bool execute(const QString &sql, qint64 *affected) = 0;
    /// Runs statements of a transaction one after the other, on their way together where the database is at
    /// the end of a line; `affected` takes the number of rows that each changed. The first that fails ends
    /// it.
    virtual bool executeAll(const QStringList &statements, QList<qint64> &affected);

    virtual bool begin() = 0;
    virtual bool commit() = 0;
    virtual bool rollback() = 0;

    /// @name The database's own catalogue
    /// Statements that give its columns: table, column, type, greatest length (Null or less than 1: none);
    /// and the columns of its indexes in their order: table, index, column.
    ///@{
    virtual QString columnsSql() const;
    virtual QString indexesSql() const;
    ///@}

    /// Seconds after which a running statement is given up; 0 waits for ever.
    virtual void setCommandTimeout(int seconds) = 0;

    const QList<ProviderError> &errors() const { return m_errors; }
    void clearErrors() { m_errors.clear(); }

protected:
    QList<ProviderError> m_errors;
};

/// Whether the server ended a transaction because it and another one waited for each other.
bool saysDeadlock(const QList<ProviderError> &errors);

/// The provider that a connection string asks for: "Provider=SQLite;…" the embedded database, everything
/// else, PostgreSQL too, ODBC. Not opened yet.
std::unique_ptr<DbProvider> makeProvider(const QString &connectionString);
