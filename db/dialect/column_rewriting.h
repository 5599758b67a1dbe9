#pragma once

#include <QByteArray>
#include <string>
#include <vector>

/// What a database calls a column of ours.
struct TheirColumn {
    std::string table, column; ///< ours, in capitals
    std::string theirs;        ///< quoted; empty: there is none
};

/// A statement, or several with semicolons between them, with the names that the database knows; UTF-8 in and
/// out. A column that is missing is read as NULL; what an INSERT or UPDATE would write there is left out. A
/// column without its table before it is the table's that the statement writes, or the only one's that it
/// reads.
QByteArray withTheirNames(const QByteArray &sql, const std::vector<TheirColumn> &columns);
