#pragma once

#include "history/changes.h"
#include "history/operation.h"

#include <QString>
#include <QStringList>

/// The columns of a table of the log, joined by ", ".
QString logColumns(QStringView table);

/// One version number, Null where the table is empty.
QString sqlLogVersion();
/// Writes nothing, but only where it could write something: for each table of the log.
QStringList sqlTryLog();

/// Records of a transaction's changes, many rows a statement.
/// @param write id of the transaction, 32 characters
/// @param before how many it has recorded already
QStringList sqlRecord(const QString &write, qsizetype before, const QString &computer,
                      const Operation &operation, const QList<RowChange> &changes);
