#include "db/sqlite/sqlite_provider.h"

#include "db/connection_settings.h"
#include "db/connection_string.h"
#include "db/dialect/dialect.h"
#include "db/sqlite/sqlite_errors.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>
#include <algorithm>
#include <array>
#include <limits>
#include <sqlite3.h>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int defaultBusyTimeout = 10000;     // milliseconds
constexpr int stepsBetweenTimeChecks = 10000; // of SQLite's virtual machine: a fraction of a millisecond

struct Finalize {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

/// Keywords beyond these are refused: one misspelt would change where data are read from.
bool isKnownKeyword(const QString &keyword) {
    static constexpr std::array<QStringView, 3> known = {u"Provider", u"Data Source", u"Busy Timeout"};
    return std::ranges::any_of(known, [&](QStringView k) { return sameKeyword(keyword, k); });
}

std::pair<qint64, QDateTime> stateOf(const QString &path) {
    const QFileInfo file(path);
    return {file.size(), file.lastModified()};
}

QStringList columnNames(sqlite3_stmt *statement) {
    QStringList names;
    for (int i = 0, n = sqlite3_column_count(statement); i < n; ++i)
        names.append(QString::fromUtf8(sqlite3_column_name(statement, i)));
    return names;
}

// One look-up a cell: a value may be asked directly, for a connection is used by one thread only.
void appendCell(Recordset &rows, sqlite3_value *value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return rows.appendNull();
    case SQLITE_INTEGER:
        return rows.appendInteger(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return rows.appendReal(sqlite3_value_double(value));
    default:
        const void *text = sqlite3_value_text(value);
        return rows.appendText(text, size_t(sqlite3_value_bytes(value)));
    }
}

/// Steps a statement to its end; SQLITE_DONE when all went well.
int readRows(Recordset &rows, sqlite3_stmt *statement) {
    const QStringList names = columnNames(statement);
    rows.open(names, Recordset::Encoding::Utf8);
    const int columns = int(names.size());
    int result;
    while ((result = sqlite3_step(statement)) == SQLITE_ROW)
        for (int column = 0; column < columns; ++column)
            appendCell(rows, sqlite3_column_value(statement, column));
    return result;
}

int stepToEnd(sqlite3_stmt *statement) {
    int result;
    do
        result = sqlite3_step(statement);
    while (result == SQLITE_ROW);
    return result;
}

} // namespace

void SqliteProvider::Close::operator()(sqlite3 *db) const {
    sqlite3_close_v2(db);
}

QString SqliteProvider::databaseName() const {
    return QFileInfo(m_path).completeBaseName();
}

bool SqliteProvider::open(const QString &connectionString) {
    close();
    const auto refuse = [this](const QString &description) {
        m_errors.append(connectionError(description));
        return false;
    };
    const ConnectionString parsed(connectionString);
    if (!parsed.isValid())
        return refuse(parsed.reason());
    for (const ConnectionItem &item : parsed.items())
        if (!isKnownKeyword(item.keyword))
            return refuse(u"接続文字列の項目「%1」は使えません。"_s.arg(item.keyword));
    const std::optional<QString> source = embeddedFile(connectionString);
    if (!source)
        return refuse(u"接続文字列に Data Source（データベースファイル）がありません。"_s);

    m_path = *source;
    const QFileInfo file(m_path);
    if (!file.exists())
        return refuse(u"データベースファイルがありません。（%1）"_s.arg(QDir::toNativeSeparators(m_path)));
    if (!file.isFile())
        return refuse(u"データベースファイルではありません。（%1）"_s.arg(QDir::toNativeSeparators(m_path)));
    bool given = false;
    const int busy = parsed.value(u"Busy Timeout").toInt(&given);
    m_busyMilliseconds = given ? busy : defaultBusyTimeout;
    return openFile();
}

bool SqliteProvider::openFile() {
    sqlite3 *db = nullptr;
    int result = sqlite3_open_v2(m_path.toUtf8().constData(), &db,
                                 SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    m_db.reset(db);
    if (result == SQLITE_OK)
        result = configure();
    if (result == SQLITE_OK)
        return true;
    const bool unwritable = (result & 0xff) == SQLITE_CANTOPEN || (result & 0xff) == SQLITE_READONLY;
    if (unwritable && fallBackToImmutable())
        return true;
    fail(result);
    close();
    return false;
}

/// A write-ahead-log database whose file or folder cannot be written can only be read as one that nobody
/// changes. With a log beside it that would miss its newest rows, so then it stays an error.
bool SqliteProvider::fallBackToImmutable() {
    if (QFileInfo(m_path + u"-wal"_s).size() > 0)
        return false;
    // A share's name is no authority, which the engine would refuse.
    QByteArray uri = QUrl::fromLocalFile(m_path).toEncoded();
    if (m_path.startsWith(u"//"))
        uri = QByteArray("file://") + QUrl::toPercentEncoding(m_path, "/");
    uri += "?immutable=1";
    sqlite3 *db = nullptr;
    const int result = sqlite3_open_v2(uri.constData(), &db,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    std::unique_ptr<sqlite3, Close> opened(db);
    if (result != SQLITE_OK)
        return false;
    m_db.swap(opened);
    if (configure() == SQLITE_OK) {
        m_unchanging = stateOf(m_path);
        return true;
    }
    m_db.swap(opened); // whose error is the one to tell
    return false;
}

/// Whether somebody writes, or has written, a file that was opened as unchanging.
bool SqliteProvider::isOvertaken() const {
    return m_unchanging && (stateOf(m_path) != *m_unchanging || QFileInfo(m_path + u"-wal"_s).size() > 0);
}

int SqliteProvider::configure() {
    sqlite3_extended_result_codes(m_db.get(), 1);
    sqlite3_busy_timeout(m_db.get(), m_busyMilliseconds);
    sqlite3_progress_handler(m_db.get(), stepsBetweenTimeChecks, isOverdue, this);
    m_deadline = Clock::time_point::max();
    int result = addServerFunctions(m_db.get(), m_time);
    // The first reading, which finds files that are no database.
    if (result == SQLITE_OK)
        result = executePlain("PRAGMA schema_version; PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL");
    return result;
}

/// The file keeps its kind of journal, so the log waits for the first write: to open or read a file, which
/// may be none of ours, must not change it. Where it cannot be had, say because a colleague is reading, the
/// file stays as it is and works.
void SqliteProvider::chooseLog() {
    if (m_logIsChosen || !m_db || sqlite3_get_autocommit(m_db.get()) == 0)
        return;
    m_logIsChosen = true;
    if (sqlite3_db_readonly(m_db.get(), "main") == 0)
        executePlain("PRAGMA journal_mode = WAL");
}

void SqliteProvider::close() {
    m_db.reset();
    m_unchanging.reset();
    m_logIsChosen = false;
}

int SqliteProvider::executePlain(const char *sql) {
    return sqlite3_exec(m_db.get(), sql, nullptr, nullptr, nullptr);
}

int SqliteProvider::isOverdue(void *self) {
    return Clock::now() > static_cast<SqliteProvider *>(self)->m_deadline ? 1 : 0;
}

/// Reports the error; a transaction is rolled back at once, as a server may do.
bool SqliteProvider::fail(int result) {
    const QString message = QString::fromUtf8(sqlite3_errmsg(m_db.get()));
    m_errors.append(sqliteError(result, message, m_path));
    m_deadline = Clock::time_point::max();
    if (sqlite3_get_autocommit(m_db.get()) == 0)
        executePlain("ROLLBACK");
    if (breaksConnection(result))
        close();
    return false;
}

bool SqliteProvider::run(const QString &sql, Recordset *rows, qint64 *affected) {
    if (!m_db) {
        m_errors.append(connectionError(u"データベースに接続していません。"_s));
        return false;
    }
    const QByteArray text = inDialect(SqlDialect::Embedded, sql.toUtf8());
    m_time.text.clear();
    m_deadline = m_timeout.count() > 0 ? Clock::now() + m_timeout : Clock::time_point::max();

    const char *at = text.constData();
    const char *const end = at + text.size();
    while (at < end) {
        sqlite3_stmt *prepared = nullptr;
        const auto left = std::min<qptrdiff>(end - at, std::numeric_limits<int>::max());
        int result = sqlite3_prepare_v2(m_db.get(), at, int(left), &prepared, &at);
        const Statement statement(prepared);
        if (result != SQLITE_OK)
            return fail(result);
        if (!statement) // nothing but blanks and comments
            continue;
        const qint64 before = sqlite3_total_changes64(m_db.get());
        if (rows && sqlite3_column_count(prepared) > 0)
            result = readRows(*std::exchange(rows, nullptr), prepared);
        else
            result = stepToEnd(prepared);
        if (result != SQLITE_DONE)
            return fail(result);
        if (affected && sqlite3_total_changes64(m_db.get()) != before)
            *affected += sqlite3_changes64(m_db.get());
    }
    return true;
}

bool SqliteProvider::query(const QString &sql, Recordset &rows) {
    if (isOvertaken()) {
        close();
        if (!openFile())
            return false;
    }
    return run(sql, &rows, nullptr);
}

bool SqliteProvider::execute(const QString &sql, qint64 *affected) {
    if (affected)
        *affected = 0;
    chooseLog();
    return run(sql, nullptr, affected);
}

// Immediate: a transaction of this program always writes, and waiting for the lock at its begin cannot
// end in two transactions that wait for each other.
bool SqliteProvider::begin() {
    chooseLog();
    return run(u"BEGIN IMMEDIATE"_s, nullptr, nullptr);
}

bool SqliteProvider::commit() {
    return run(u"COMMIT"_s, nullptr, nullptr);
}

bool SqliteProvider::rollback() {
    return run(u"ROLLBACK"_s, nullptr, nullptr);
}

QString SqliteProvider::columnsSql() const {
    // A declared type holds its length in parentheses.
    return u"SELECT T.name AS T, C.name AS C, C.type, Null FROM sqlite_master AS T JOIN "
           u"pragma_table_info(T.name) AS C"
           " WHERE T.type = 'table'"_s;
}

QString SqliteProvider::indexesSql() const {
    return u"SELECT T.name AS T, I.name AS I, C.name AS C FROM sqlite_master AS T JOIN "
           u"pragma_index_list(T.name) AS I"
           " JOIN pragma_index_info(I.name) AS C WHERE T.type = 'table' ORDER BY T.name, I.name, C.seqno"_s;
}
