#include "db/sqlite/sqlite_provider.h"

#include "db/connection_string.h"
#include "db/sqlite/dialect.h"
#include "db/sqlite/functions.h"
#include "db/sqlite/sqlite_errors.h"

#include <QFileInfo>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int busyTimeout = 10'000;        // milliseconds
constexpr int stepsBetweenLooks = 100'000; // virtual machine steps between two looks at the clock
} // namespace

SqliteProvider::SqliteProvider() = default;

SqliteProvider::~SqliteProvider() {
    close();
}

void SqliteProvider::Finalize::operator()(sqlite3_stmt *statement) const {
    sqlite3_finalize(statement);
}

bool SqliteProvider::open(const QString &connectionString) {
    close();
    const ConnectionString string(connectionString);
    m_path = string.value(u"Data Source");
    if (!string.isValid() || m_path.isEmpty()) {
        m_errors.append(sqliteError(
            SQLITE_CANTOPEN,
            string.isValid() ? u"接続文字列に Data Source がありません。"_s : string.reason(), m_path));
        return false;
    }
    const int result =
        sqlite3_open_v2(m_path.toUtf8().constData(), &m_handle, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_extended_result_codes(m_handle, 1);
    const bool opened = result == SQLITE_OK ? prepareFile() : fail(result);
    if (!opened)
        close();
    return opened;
}

bool SqliteProvider::prepareFile() {
    sqlite3_busy_timeout(m_handle, busyTimeout);
    sqlite3_progress_handler(
        m_handle, stepsBetweenLooks,
        [](void *self) {
            const auto *provider = static_cast<const SqliteProvider *>(self);
            return int(provider->m_timeout > 0 &&
                       provider->m_clock.hasExpired(qint64(provider->m_timeout) * 1000));
        },
        this);
    startClock();
    if (!addServerFunctions(m_handle))
        return fail(sqlite3_extended_errcode(m_handle));
    // The first look at the file tells whether it is a database at all.
    if (!run("SELECT count(*) FROM sqlite_master") || !run("PRAGMA foreign_keys = ON"))
        return false;
    const bool writable = sqlite3_db_readonly(m_handle, "main") == 0;
    // With the write-ahead log, durable commits need no wait for readers; a power cut must not lose a
    // consent.
    return !writable || (run("PRAGMA journal_mode = WAL") && run("PRAGMA synchronous = FULL"));
}

void SqliteProvider::close() {
    sqlite3_close_v2(m_handle);
    m_handle = nullptr;
}

QString SqliteProvider::databaseName() const {
    return QFileInfo(m_path).completeBaseName();
}

bool SqliteProvider::fail(int code) {
    m_errors.append(sqliteError(code, QString::fromUtf8(sqlite3_errmsg(m_handle)), m_path));
    return false;
}

// A transaction ends with the statement that fails in it.
bool SqliteProvider::failStatement(int code) {
    fail(code);
    if (!sqlite3_get_autocommit(m_handle))
        sqlite3_exec(m_handle, "ROLLBACK", nullptr, nullptr, nullptr);
    return false;
}

bool SqliteProvider::run(const char *sql) {
    const int result = sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr);
    return result == SQLITE_OK || fail(sqlite3_extended_errcode(m_handle));
}

// Null with an error when the text cannot be prepared; null without one for blank text.
SqliteProvider::Statement SqliteProvider::prepare(const char *&rest) {
    sqlite3_stmt *raw = nullptr;
    const int result = sqlite3_prepare_v2(m_handle, rest, -1, &raw, &rest);
    if (result != SQLITE_OK)
        failStatement(sqlite3_extended_errcode(m_handle));
    return Statement(raw);
}

bool SqliteProvider::query(const QString &sql, Recordset &rows) {
    startClock();
    const QByteArray text = embeddedDialect(sql).toUtf8();
    const char *rest = text.constData();
    const qsizetype errors = m_errors.size();
    const Statement statement = prepare(rest);
    if (!statement)
        return m_errors.size() == errors ? fail(SQLITE_MISUSE) : false;

    sqlite3_stmt *s = statement.get();
    QStringList names;
    const int count = sqlite3_column_count(s);
    for (int i = 0; i < count; ++i)
        names.append(QString::fromUtf8(sqlite3_column_name(s, i)));
    rows.open(names, Recordset::Encoding::Utf8);
    int result;
    while ((result = sqlite3_step(s)) == SQLITE_ROW) {
        for (int i = 0; i < count; ++i) {
            switch (sqlite3_column_type(s, i)) {
            case SQLITE_NULL:
                rows.appendNull();
                break;
            case SQLITE_INTEGER:
                rows.appendInteger(sqlite3_column_int64(s, i));
                break;
            case SQLITE_FLOAT:
                rows.appendReal(sqlite3_column_double(s, i));
                break;
            default: {
                const void *bytes = sqlite3_column_text(s, i);
                rows.appendText(bytes, size_t(sqlite3_column_bytes(s, i)));
            }
            }
        }
    }
    return result == SQLITE_DONE || failStatement(sqlite3_extended_errcode(m_handle));
}

bool SqliteProvider::execute(const QString &sql, qint64 *affected) {
    startClock();
    const QByteArray text = embeddedDialect(sql).toUtf8();
    qint64 changed = 0;
    const qsizetype errors = m_errors.size();
    for (const char *rest = text.constData(); *rest;) {
        const Statement statement = prepare(rest);
        if (!statement) {
            if (m_errors.size() != errors)
                return false;
            continue;
        }
        const qint64 before = sqlite3_total_changes64(m_handle);
        int result;
        while ((result = sqlite3_step(statement.get())) == SQLITE_ROW)
            ;
        if (result != SQLITE_DONE)
            return failStatement(sqlite3_extended_errcode(m_handle));
        if (sqlite3_total_changes64(m_handle) != before)
            changed += sqlite3_changes64(m_handle);
    }
    if (affected)
        *affected = changed;
    return true;
}

bool SqliteProvider::begin() {
    startClock();
    return run("BEGIN IMMEDIATE");
}

bool SqliteProvider::commit() {
    startClock();
    if (run("COMMIT"))
        return true;
    sqlite3_exec(m_handle, "ROLLBACK", nullptr, nullptr, nullptr);
    return false;
}

bool SqliteProvider::rollback() {
    startClock();
    return sqlite3_get_autocommit(m_handle) || run("ROLLBACK");
}
