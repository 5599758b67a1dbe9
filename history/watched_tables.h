#pragma once

#include "db/recordset.h"
#include "history/changes.h"

#include <QStringList>
#include <QStringView>
#include <span>

/// A table whose changes are recorded.
struct WatchedTable {
    QStringView name;
    QStringList columns; ///< all that the program knows of, its own spelling
    QStringList keys;    ///< among them
    bool ofPatient;      ///< rows are a patient's, by nIDNo

    /// Some of its rows; the columns are those above, in their order.
    QString selectSql(const QString &where) const;
};

/// All of them.
std::span<const WatchedTable> watchedTables();
const WatchedTable *watchedTable(QStringView name);

/// What differs between two readings of the same rows, row by row of their keys.
QList<RowChange> rowChanges(const WatchedTable &table, const Recordset &before, const Recordset &after);
