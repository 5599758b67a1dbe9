#pragma once

#include "app/base/result.h"
#include "consent/record/list_row.h"
#include "history/operation.h"

#include <vector>

class cT_ADODB;

/// A row of the list and what it is to hold.
struct RowEdit {
    ReadRow read;
    ConsentRowValues now;
};

/// An edit and whose row it is, for telling the user: "12 山田太郎".
struct TypedRow : RowEdit {
    QString who;
};

/// Writes edited list rows back in one transaction, all or none. A row is written only while it is the newest
/// and nobody has written it since: its update time is what was read or, where it has none, the written
/// columns still hold what was read.
/// @param operation in whose name
/// @return positions of the rows that a colleague changed or removed; nothing was written when there are any
Result<std::vector<size_t>> saveRows(cT_ADODB &db, const std::vector<RowEdit> &edits,
                                     const Operation &operation);
