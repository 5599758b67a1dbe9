#pragma once

#include "app/base/result.h"
#include "db/adodb.h"

#include <QStringList>

/// Whether a table is there.
Result<bool> hasTable(cT_ADODB &db, QStringView table);

/// Makes tables by statements joined with semicolons, all of them or none.
/// @param table one of them, by which it is known that they are there
/// @return false when they are there already, also when another PC makes them at the same moment; a failure's
/// reason is what the database said
Result<bool> makeTables(cT_ADODB &db, const QString &statements, QStringView table);

/// Whether they are there, by the branches' table.
Result<bool> hasSchema(cT_ADODB &db);

/// Makes the suite's tables and indexes in the database of an open connection, all of them or none.
/// @return false when they are there already, also when another PC makes them at the same moment
Result<bool> makeSchema(cT_ADODB &db);

/// The statements of schema.sql, each without its semicolon.
QStringList schemaStatements();
