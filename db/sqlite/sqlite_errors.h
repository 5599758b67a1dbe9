#pragma once

#include "db/provider.h"

/// An error of the embedded engine as a provider error, named for the user.
/// @param code the engine's extended result code
/// @param detail the engine's own text
/// @param path of the database file
ProviderError sqliteError(int code, const QString &detail, const QString &path);

/// An error that is found before the engine is asked.
ProviderError connectionError(const QString &description);

/// After this the connection is of no more use: the file has gone, or is no database.
bool breaksConnection(int code);
