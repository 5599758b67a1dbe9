#include "sample/bulk_database.h"

#include <QDir>
#include <array>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

/// Tables name the collation; rows alone never compare by it, and the indexes that do are made by the
/// program's own connection. Should something compare after all, it fails loudly.
int refuseToCompare(void *used, int, const void *, int, const void *) {
    *static_cast<bool *>(used) = true;
    return 0;
}

// Dates and times are written by hand, for that is done some ten million times.
void writeDigits(char *to, int count, int number) {
    for (int i = count - 1; i >= 0; --i, number /= 10)
        to[i] = static_cast<char>('0' + number % 10);
}

/// "yyyy/mm/dd"
void writeDate(char *to, QDate date) {
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    writeDigits(to, 4, year);
    to[4] = '/';
    writeDigits(to + 5, 2, month);
    to[7] = '/';
    writeDigits(to + 8, 2, day);
}

} // namespace

void Cell::put(int number) {
    sqlite3_bind_int(m_statement, m_parameter, number);
}

void Cell::put(double number) {
    sqlite3_bind_double(m_statement, m_parameter, number);
}

void Cell::put(const QString &text) {
    if (text.isNull())
        return;
    const QByteArray utf8 = text.toUtf8();
    putBytes(utf8.constData(), static_cast<int>(utf8.size()));
}

void Cell::put(QDate date) {
    if (!date.isValid())
        return;
    std::array<char, 10> text;
    writeDate(text.data(), date);
    putBytes(text.data(), 10);
}

void Cell::put(const QDateTime &time) {
    if (!time.isValid())
        return;
    std::array<char, 19> text;
    text.fill(':');
    writeDate(text.data(), time.date());
    text[10] = ' ';
    writeDigits(text.data() + 11, 2, time.time().hour());
    writeDigits(text.data() + 14, 2, time.time().minute());
    writeDigits(text.data() + 17, 2, time.time().second());
    putBytes(text.data(), static_cast<int>(text.size()));
}

void Cell::putBytes(const char *text, int length) {
    sqlite3_bind_text(m_statement, m_parameter, text, length, SQLITE_TRANSIENT);
}

BulkDatabase::BulkDatabase(const QString &path) : m_path(path) {
    const int result = sqlite3_open_v2(QDir::toNativeSeparators(path).toUtf8().constData(), &m_db,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (result != SQLITE_OK) {
        fail();
        return;
    }
    sqlite3_create_collation(m_db, "Japanese_CI_AS", SQLITE_UTF8, &m_compared, refuseToCompare);
    // A crash leaves a file that is made again, so nothing is paid for safety.
    execute(u"PRAGMA journal_mode = OFF"_s);
    execute(u"PRAGMA synchronous = OFF"_s);
    execute(u"PRAGMA locking_mode = EXCLUSIVE"_s);
    execute(u"PRAGMA cache_size = -200000"_s);
    execute(u"BEGIN"_s);
}

BulkDatabase::~BulkDatabase() {
    close();
}

void BulkDatabase::execute(const QString &sql) {
    if (m_error.isEmpty() &&
        sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail();
}

Result<> BulkDatabase::finish() {
    execute(u"COMMIT"_s);
    if (m_error.isEmpty() && m_compared)
        m_error = u"データベース「%1」の並び順を確かめられません。"_s.arg(m_path);
    close();
    return m_error.isEmpty() ? Result<>() : Failure{m_error};
}

sqlite3_stmt *BulkDatabase::prepare(const QByteArray &table, const QList<QByteArray> &columns) {
    if (!m_error.isEmpty())
        return nullptr;
    const QByteArray marks = QByteArray("?,").repeated(columns.size()).chopped(1);
    const QByteArray sql = "INSERT INTO " + table + " (" + columns.join(',') + ") VALUES (" + marks + ")";
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(m_db, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
        fail();
    else
        m_statements.append(statement);
    return statement;
}

void BulkDatabase::step(sqlite3_stmt *statement) {
    if (m_error.isEmpty() && sqlite3_step(statement) != SQLITE_DONE)
        fail();
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
}

void BulkDatabase::fail() {
    m_error =
        u"データベース「%1」を作成できません。（%2）"_s.arg(m_path, QString::fromUtf8(sqlite3_errmsg(m_db)));
}

void BulkDatabase::close() {
    for (sqlite3_stmt *statement : std::as_const(m_statements))
        sqlite3_finalize(statement);
    m_statements.clear();
    sqlite3_close(m_db);
    m_db = nullptr;
}

} // namespace sample
