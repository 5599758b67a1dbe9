#pragma once

struct sqlite3;

/// Gives a connection what the server has and the embedded engine lacks: the collation Japanese_CI_AS, a LIKE
/// that compares by it, GetDate(), charindex(), len() and convert_as(type, value, style), into which the
/// dialect turns CONVERT. False when the engine refuses one.
bool addServerFunctions(sqlite3 *handle);
