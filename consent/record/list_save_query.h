#pragma once

#include "consent/record/list_row.h"
#include "db/tables/keys.h"

#include <QString>

/// A row of the list as it was when it was read.
struct ReadRow {
    ConsentRowKey key;
    ConsentRowValues values;
    QString updateTime; ///< tUpDateTime as the database gave it; empty: the row has none, or not known
    /// What stands where a date should be and is none; empty for dates and empty cells.
    QString oddReconsent, oddStart, oddEnd;
};

/// The UPDATE that writes a changed list row back. It finds the row only while it is the newest and nobody
/// has written it since: its update time is what was read or, where it has none, the written columns still
/// hold what was read. No affected row means that a colleague changed or removed it.
/// @param computer name of this computer, for the row's audit column
QString saveRowSql(const ReadRow &read, const ConsentRowValues &now, const QString &computer);
