#pragma once

#include "db/connection_string.h"
#include "db/odbc/odbc_target.h"

/// Whether a string without Driver or DSN asks for PostgreSQL: Provider=PostgreSQL, or the name of an OLE DB
/// provider for it.
bool asksForPostgres(const ConnectionString &source);

/// Maps such a string to the keywords of PostgreSQL's own ODBC driver. As for SQL Server, an unknown keyword
/// is an error.
OdbcTarget postgresTarget(const ConnectionString &source, const QStringList &installed);
