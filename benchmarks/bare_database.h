#pragma once

#include "db/sqlite/functions.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

struct sqlite3;

/// The embedded engine through its C interface alone, with the collation and the functions that the
/// statements name: the yardstick of the program's own data access.
class BareDatabase {
public:
    explicit BareDatabase(const QString &path);
    ~BareDatabase();
    BareDatabase(const BareDatabase &) = delete;
    BareDatabase &operator=(const BareDatabase &) = delete;

    /// Steps through the rows of a SELECT, makes one UTF-16 string a cell and keeps none. Gives the number of
    /// rows.
    size_t stepThrough(const QByteArray &sql) const;
    /// The same, and the rows are kept.
    std::vector<QStringList> read(const QByteArray &sql) const;
    /// The engine's plan for a statement, one line a loop.
    QStringList plan(const QByteArray &sql) const;

private:
    template <class Row, class Cell>
    void step(const QByteArray &sql, const Row &beginRow, const Cell &takeCell) const;

    sqlite3 *m_handle = nullptr;
    StatementTime m_time;
};
