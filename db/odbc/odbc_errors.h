#pragma once

#include "db/odbc/odbc_api.h"
#include "db/provider.h"

#include <QList>

/// Every diagnostic record of a handle, in the driver's order: the real error may stand behind a general one.
QList<ProviderError> odbcDiagnostics(SQLSMALLINT handleType, SQLHANDLE handle);

/// An error of our own with the given state.
ProviderError odbcError(const QString &sqlState, const QString &description);

/// Whether some record says that the connection is gone (class 08).
bool saysConnectionLost(const QList<ProviderError> &errors);

/// Replaces the password wherever a description holds it.
void hidePassword(QList<ProviderError> &errors, const QString &password);
