#pragma once

#include "db/provider.h"

#include <QElapsedTimer>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// The embedded database: one file, shared by the programs of one machine. Opens "Provider=SQLite;Data
/// Source=path"; a relative path is taken from the current directory, and a file that is not there is not
/// made. Statements come in the server's dialect.
class SqliteProvider : public DbProvider {
public:
    SqliteProvider();
    ~SqliteProvider() override;

    bool open(const QString &connectionString) override;
    void close() override;
    bool isOpen() const override { return m_handle != nullptr; }
    QString databaseName() const override;

    bool query(const QString &sql, Recordset &rows) override;
    bool execute(const QString &sql, qint64 *affected) override;

    /// Takes the write lock at once, so that two programs wait for each other here and not half-way.
    bool begin() override;
    bool commit() override;
    bool rollback() override;

    void setCommandTimeout(int seconds) override { m_timeout = seconds; }

private:
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

    bool prepareFile();
    Statement prepare(const char *&rest);
    bool run(const char *sql);
    bool fail(int code);
    bool failStatement(int code);
    void startClock() { m_clock.start(); }

    sqlite3 *m_handle = nullptr;
    QString m_path;
    int m_timeout = 0; ///< seconds, 0: none
    QElapsedTimer m_clock;
};
