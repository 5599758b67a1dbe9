#pragma once

#include <QByteArray>

/// Rewrites a statement in SQL Server's dialect for SQLite; UTF-8 in and out. What needs no change comes
/// back as it is. Rewritten are:
/// - `TOP n` and `TOP (n)` of any SELECT, to LIMIT at the end of that SELECT;
/// - `+` that joins texts, to `||`. A chain of + joins texts when one of its operands is known to be text
///   and none to be a number, as the server, too, adds when either side is a number. Known to be text are
///   literals, functions that give text, conversions to text, and columns by their names (c, s or cs and a
///   capital: cName); numbers are literals, products, differences, and the columns i…, n…, m…, d…;
/// - `CONVERT(type, x, style)` and `CAST(x AS DATE or DATETIME)`. Dates are text here, so that a style
/// applies
///   to what looks like a date and is not known to be text;
/// - `N'…'`, `ISNULL(a, b)`, `LEFT(x, n)` and `RIGHT(x, n)`.
/// The functions GetDate, Len, CharIndex and those that the rewriting puts in are registered by
/// addServerFunctions.
QByteArray embeddedDialect(const QByteArray &sql);
