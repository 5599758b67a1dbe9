#pragma once

#include "history/changes.h"
#include "history/history_query.h"

/// What was done to one row: a record taken apart, or two that together tell of a row that went to another
/// key.
struct LogEntry {
    enum Kind { Unknown, New, Changed, Deleted, Moved };

    LogRecord record;
    Kind kind = Unknown;
    QString keyBefore; ///< of a moved row
    QList<CellChange> changes;
    bool readable = true; ///< otherwise the changes are those of the record as they stand
};

/// Takes records apart, in their order. A consent that was entered under another date is written as one that
/// is deleted and one that is new.
std::vector<LogEntry> entriesOf(const LogRecords &read);

/// What was done to one row of a consent, newest first, followed back through its moves.
std::vector<LogEntry> entriesOfRow(const std::vector<LogEntry> &entries, const ConsentRowKey &row);
