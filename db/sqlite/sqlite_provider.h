#pragma once

#include "db/provider.h"
#include "db/sqlite/functions.h"

#include <QDateTime>
#include <chrono>
#include <memory>
#include <optional>
#include <utility>

struct sqlite3;
struct sqlite3_stmt;

/// The embedded database, one file: "Provider=SQLite;Data Source=file". A relative path counts from the
/// program folder. "Busy Timeout=n" (milliseconds) says how long to wait for another program's lock.
/// A missing file is not made; a file that cannot be written is opened for reading, and anew when a colleague
/// has written it.
class SqliteProvider : public DbProvider {
public:
    bool open(const QString &connectionString) override;
    void close() override;
    bool isOpen() const override { return m_db != nullptr; }
    /// The file's name without folder and suffix.
    QString databaseName() const override;
    SqlDialect dialect() const override { return SqlDialect::Embedded; }

    bool query(const QString &sql, Recordset &rows) override;
    /// Takes several statements too, one after the other; `affected` counts the rows of all.
    bool execute(const QString &sql, qint64 *affected) override;

    bool begin() override;
    bool commit() override;
    bool rollback() override;

    QString columnsSql() const override;
    QString indexesSql() const override;
    void setCommandTimeout(int seconds) override { m_timeout = std::chrono::seconds(seconds); }

private:
    struct Close {
        void operator()(sqlite3 *db) const;
    };
    using Clock = std::chrono::steady_clock;

    bool openFile();
    int configure();
    bool fallBackToImmutable();
    bool isOvertaken() const;
    void chooseLog();
    /// Takes the rows of the first statement that gives rows, when `rows` is not null.
    bool run(const QString &sql, Recordset *rows, qint64 *affected);
    bool fail(int result);
    int executePlain(const char *sql);
    static int isOverdue(void *self);

    std::unique_ptr<sqlite3, Close> m_db;
    QString m_path;
    int m_busyMilliseconds = 0;
    /// Size and time of the file when it was opened as one that nobody changes.
    std::optional<std::pair<qint64, QDateTime>> m_unchanging;
    bool m_logIsChosen = false;
    StatementTime m_time;
    std::chrono::seconds m_timeout{0};
    Clock::time_point m_deadline;
};
