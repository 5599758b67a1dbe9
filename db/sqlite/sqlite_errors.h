#pragma once

#include "db/provider.h"

/// An error of the embedded engine as a provider error, named for the user.
/// @param code the engine's extended result code
/// @param detail the engine's own text
/// @param path of the database file
ProviderError sqliteError(int code, const QString &detail, const QString &path);
