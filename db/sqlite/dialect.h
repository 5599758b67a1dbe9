#pragma once

#include <QString>

/// Rewrites a statement in the server's dialect for the embedded engine: TOP n becomes LIMIT n, CONVERT(type,
/// x, style) convert_as('type', x, style), ISNULL(a, b) ifnull(a, b), N'…' '…', and a + that joins texts ||.
///
/// A + joins texts when one of its sides is a text: a literal, a join before it, a call of a text function,
/// CAST or CONVERT to a character type, or a column whose name begins with the mark of a text (c, cs or s
/// before a capital). Statements with none of these pass unchanged.
QString embeddedDialect(const QString &sql);
