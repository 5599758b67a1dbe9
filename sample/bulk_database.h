#pragma once

#include "app/base/result.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace sample {

/// One value of the row that is being written. A null text, an invalid date and an empty optional are Null.
class Cell {
public:
    Cell(sqlite3_stmt *statement, int parameter) : m_statement(statement), m_parameter(parameter) {}

    void put(int number);
    void put(bool flag) { put(flag ? 1 : 0); }
    void put(double number);
    void put(const QString &text);
    void put(QDate date);
    void put(const QDateTime &time);
    template <class T> void put(const std::optional<T> &value) {
        if (value)
            put(*value);
    }

private:
    void putBytes(const char *text, int length);

    sqlite3_stmt *m_statement;
    int m_parameter;
};

/// A column of a table and where its value is found in a row of the sample. Columns that are not listed stay
/// Null.
template <class Row> struct Column {
    const char *name;
    void (*put)(Cell, const Row &);
};

/// A database file that is being filled, in one transaction and without a journal. It does not go through
/// cT_ADODB, whose statements are texts: building and parsing one for each of a million and a half rows takes
/// minutes, a prepared statement seconds. After the first failure every call does nothing; finish() tells.
class BulkDatabase {
public:
    explicit BulkDatabase(const QString &path);
    ~BulkDatabase();
    BulkDatabase(const BulkDatabase &) = delete;
    BulkDatabase &operator=(const BulkDatabase &) = delete;

    void execute(const QString &sql);

    /// Writes the rows given by `insert` into a table.
    template <class Row> class Inserter {
    public:
        Inserter(BulkDatabase &db, const QByteArray &table, QList<Column<Row>> columns)
            : m_db(db), m_columns(std::move(columns)), m_statement(db.prepare(table, names())) {}

        void insert(const Row &row) {
            if (!m_statement)
                return;
            for (int i = 0; i < m_columns.size(); ++i)
                m_columns.at(i).put(Cell(m_statement, i + 1), row);
            m_db.step(m_statement);
        }

    private:
        QList<QByteArray> names() const {
            QList<QByteArray> list;
            for (const Column<Row> &column : m_columns)
                list.append(column.name);
            return list;
        }

        BulkDatabase &m_db;
        QList<Column<Row>> m_columns;
        sqlite3_stmt *m_statement;
    };

    /// Inserts a list of rows.
    template <class Row>
    void insertAll(const QByteArray &table, const QList<Column<Row>> &columns, const QList<Row> &rows) {
        Inserter<Row> inserter(*this, table, columns);
        for (const Row &row : rows)
            inserter.insert(row);
    }

    /// Ends the transaction and closes the file; fails when anything has since the file was opened.
    Result<> finish();

private:
    sqlite3_stmt *prepare(const QByteArray &table, const QList<QByteArray> &columns);
    void step(sqlite3_stmt *statement);
    void fail();
    void close();

    QString m_path;
    QString m_error;
    bool m_compared = false; ///< something asked for the order of Japanese text
    sqlite3 *m_db = nullptr;
    QList<sqlite3_stmt *> m_statements;
};

} // namespace sample
