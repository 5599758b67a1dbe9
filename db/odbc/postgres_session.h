#pragma once

#include "db/odbc/odbc_api.h"
#include "db/provider.h"

#include <QList>

/// Begins a session on a PostgreSQL server: how dates are read and written, and that a backslash in a text is
/// one. False with the reasons in `errors`, also for a database that does not keep its texts as UTF-8.
bool beginPostgresSession(SQLHDBC connection, QList<ProviderError> &errors);

/// Says what an error of the server means for the user before the server's own words, where those do not say
/// it best, and leaves out the row that is in it: patients' data.
void explainPostgresErrors(QList<ProviderError> &errors);
