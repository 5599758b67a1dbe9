#include "benchmarks/bare_database.h"

#include "benchmarks/figures.h"

#include <sqlite3.h>

BareDatabase::BareDatabase(const QString &path) {
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(path.toUtf8().constData(), &m_handle, flags, nullptr) != SQLITE_OK ||
        addServerFunctions(m_handle, m_time) != SQLITE_OK)
        stop(QString::fromUtf8(sqlite3_errmsg(m_handle)));
}

BareDatabase::~BareDatabase() {
    sqlite3_close(m_handle);
}

template <class Row, class Cell>
void BareDatabase::step(const QByteArray &sql, const Row &beginRow, const Cell &takeCell) const {
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(m_handle, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
        stop(QString::fromUtf8(sqlite3_errmsg(m_handle)));
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        beginRow();
        for (int i = 0; i < columns; ++i) {
            const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, i));
            takeCell(QString::fromUtf8(text, sqlite3_column_bytes(statement, i)));
        }
    }
    if (sqlite3_finalize(statement) != SQLITE_OK)
        stop(QString::fromUtf8(sqlite3_errmsg(m_handle)));
}

size_t BareDatabase::stepThrough(const QByteArray &sql) const {
    size_t rows = 0;
    qsizetype characters = 0;
    step(
        sql, [&] { ++rows; }, [&](const QString &cell) { characters += cell.size(); });
    return characters < 0 ? 0 : rows;
}

std::vector<QStringList> BareDatabase::read(const QByteArray &sql) const {
    std::vector<QStringList> rows;
    step(
        sql, [&] { rows.emplace_back(); }, [&](const QString &cell) { rows.back().append(cell); });
    return rows;
}

QStringList BareDatabase::plan(const QByteArray &sql) const {
    constexpr int detail = 3; // column
    QStringList lines;
    for (const QStringList &row : read("EXPLAIN QUERY PLAN " + sql))
        lines.append(row[detail]);
    return lines;
}
