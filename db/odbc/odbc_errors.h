#pragma once

#include "db/odbc/odbc_api.h"
#include "db/provider.h"

#include <QList>
#include <chrono>

/// Every diagnostic record of a handle, in the driver's order: the real error may stand behind a general one.
QList<ProviderError> odbcDiagnostics(SQLSMALLINT handleType, SQLHANDLE handle);

/// An error of our own with the given state.
ProviderError odbcError(const QString &sqlState, const QString &description);

/// The error of what did not answer in time.
ProviderError lateError(std::chrono::seconds limit);

/// Whether some record says that the connection is gone, or goes now.
bool saysConnectionLost(const QList<ProviderError> &errors);

/// Whether a roll-back was refused because the server has undone the transaction already, as SQL Server does
/// with the victim of a deadlock.
bool saysNothingToUndo(const QList<ProviderError> &errors);

/// Replaces the password wherever a description holds it.
void hidePassword(QList<ProviderError> &errors, const QString &password);
