#pragma once

#include "db/recordset.h"

#include <optional>

struct Environment;

/// Whether a text is a month yyyymm.
bool isMonth(const QString &month);

/// The rows of a price table that are in force in a month (yyyymm), read over the connection of adodb.ini;
/// nothing when that fails, which has been said.
/// @param label of the operation, for the message
std::optional<Recordset> rowsInForce(Environment &environment, QStringView table, const QString &month,
                                     QStringView order, QStringView label);

/// A cell as a 32-bit number; nothing where it holds none.
std::optional<qint32> numberIn(const Recordset &rows, int row, QStringView column);
