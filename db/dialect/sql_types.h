#pragma once

#include "db/dialect/edits.h"
#include "db/dialect/sql_words.h"

#include <string>

/// A type as it stands in a statement: DECIMAL(9, 3).
struct SqlType {
    std::string_view name = {};
    std::string_view arguments = {}; ///< without the parentheses
    ConversionTarget target = ConversionTarget::Text;
    size_t next = 0; ///< the token behind it

    /// Characters of VARCHAR(n); empty: unlimited.
    std::string length() const;
};

/// The type that begins at a token.
SqlType sqlTypeAt(const std::vector<SqlToken> &tokens, size_t at);

/// A name that may stand in brackets or quotes, as PostgreSQL takes it: folded to lower case, in quotes.
std::string postgresName(std::string_view name);

/// PostgreSQL's type for one of SQL Server's. Texts are `bpchar` without a length: the one type that compares
/// without the blanks at the end, as the server does.
std::string postgresType(const SqlType &type);

/// Sees to it that the columns of CREATE TABLE and ALTER TABLE … ADD take what the server's take. PostgreSQL
/// gets types of its own, and checks of a text's length by the functions utf16_units and bytes932: the server
/// counts NVARCHAR(n) in units of UTF-16, VARCHAR(n) in bytes of code page 932. SQLite, whose types bind
/// nothing, gets checks of the length in characters, and of dates.
void writeColumns(const std::vector<SqlToken> &tokens, bool postgres, Edits &edits);
