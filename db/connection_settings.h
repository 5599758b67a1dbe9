#pragma once

#include "app/base/result.h"

#include <optional>

class Folders;

/// The connection string of adodb.ini in the program folder, or why there is none.
Result<QString> readConnectionString(const Folders &folders);

/// Whether there is an adodb.ini: without one the program was never set up here.
bool hasConnectionSettings(const Folders &folders);

/// Makes a connection string the one of adodb.ini, which is written whole; a failure names the file.
Result<> writeConnectionString(const Folders &folders, const QString &connection);

/// The connection string of an embedded database file, or why its path cannot stand in adodb.ini.
Result<QString> embeddedConnection(const QString &file);

/// What tells the database of a connection string from others: its file, or server and database, without a
/// word of who logs in.
QString databaseName(const QString &connection);

/// The full path of the embedded database that a connection string names; nothing for a server. A relative
/// path counts from the program folder.
std::optional<QString> embeddedFile(const QString &connection);
