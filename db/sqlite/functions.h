#pragma once

#include <QByteArray>

struct sqlite3;

/// The time of the running statement: as on the server, all rows of a statement see the same.
struct StatementTime {
    QByteArray text; ///< "yyyy/mm/dd hh:mm:ss.fff"; empty until it is asked for
};

/// Registers the functions of SQL Server that SQLite lacks or has otherwise: GetDate, Len, CharIndex,
/// convert_date, left_text, right_text, LIKE, and the collation Japanese_CI_AS.
/// @param time cleared by the caller before each statement; must outlive the connection
/// @return a result code of SQLite
int addServerFunctions(sqlite3 *db, StatementTime &time);
