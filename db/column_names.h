#pragma once

#include "app/base/result.h"

#include <QString>
#include <QStringList>
#include <span>
#include <vector>

class Folders;
class Recordset;

/// A column that not every database has, or has under another name. Read without it as Null, and written
/// without it.
struct OptionalColumn {
    QStringView table;
    QStringView column;
    QStringView usedIn; ///< screens and documents that are poorer without it
};

/// All of them. Statements spell them as they stand here.
std::span<const OptionalColumn> optionalColumns();

/// What the optional columns are called in one database.
class ColumnNames {
public:
    struct Entry {
        const OptionalColumn *column;
        QString said;    ///< by the practice, else our name; empty: there is none
        QString inForce; ///< as the database spells it; empty: there is none

        bool isOurs() const;
    };

    ColumnNames();

    /// What the practice calls a column; an empty name: its database has none. A failure when no column is
    /// optional under our name, or theirs is no name.
    Result<> set(const QString &table, const QString &column, const QString &theirs);

    /// Takes what the database has.
    /// @param columns names of tables and columns, in the first two columns
    void settle(const Recordset &columns);
    bool isSettled() const { return m_settled; }
    /// Whether all columns are there under our names.
    bool areOurs() const { return m_ours; }
    /// To be settled anew.
    void unsettle() { m_settled = m_ours = false; }

    std::span<const Entry> entries() const { return m_entries; }
    /// Also true of a column that every database has.
    bool has(QStringView table, QStringView column) const { return !inForce(table, column).isEmpty(); }
    /// What a column is called; our name where it is not optional.
    QString inForce(QStringView table, QStringView column) const;

    /// Whether a statement may name an optional column.
    static bool concerns(const QString &sql);
    /// A statement with the names that hold in the database. Where a column is missing, Null is read and
    /// nothing is written.
    QString applied(const QString &sql) const;

private:
    std::vector<Entry> m_entries;
    bool m_settled = false;
    bool m_ours = false; ///< settled, and all there
};

struct ColumnNamesRead {
    ColumnNames names;
    QStringList oddities; ///< lines that were passed over, and why
};

/// What 列名.ini of the data folder says: a section a table, our name = theirs. No file: our names.
ColumnNamesRead readColumnNames(const Folders &folders);
