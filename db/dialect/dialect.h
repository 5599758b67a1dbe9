#pragma once

#include <QByteArray>
#include <QString>

/// Whose SQL a database speaks.
enum class SqlDialect { SqlServer, Embedded, PostgreSql };

/// Rewrites a statement in SQL Server's dialect for another engine; UTF-8 in and out. What needs no change
/// comes back as it is. Rewritten are:
/// - `TOP n` and `TOP (n)` of any SELECT, to LIMIT at the end of that SELECT;
/// - `+` that joins texts, to `||`. A chain of + joins texts when one of its operands is known to be text
///   and none to be a number, as the server, too, adds when either side is a number. Known to be text are
///   literals, functions that give text, conversions to text, and columns by their names (c, s or cs and a
///   capital: cName); numbers are literals, products, differences, and the columns i…, n…, m…, d…;
/// - `CONVERT(type, x, style)` and CAST. A style applies to what is or looks like a date and is not known to
///   be text;
/// - `N'…'`, and functions that have another name there.
/// For PostgreSQL also:
/// - `a LIKE b ESCAPE c`, to a function that compares as the server's Japanese collation;
/// - the order of Nulls, which come before all values;
/// - `[name]` and "name", which fold to lower case as plain names do;
/// - the types of columns in CREATE TABLE and ALTER TABLE … ADD, with a check that no text is longer than on
///   the server.
/// The functions that are neither renamed nor the engine's own are registered by addServerFunctions, or made
/// with the tables.
QByteArray inDialect(SqlDialect dialect, const QByteArray &sql);
QString inDialect(SqlDialect dialect, const QString &sql);
