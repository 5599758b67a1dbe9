#include "db/provider.h"

#include "db/connection_string.h"
#include "db/odbc/odbc_provider.h"
#include "db/sqlite/sqlite_provider.h"

std::unique_ptr<DbProvider> makeProvider(const QString &connectionString) {
    if (ConnectionString(connectionString).kind() == ConnectionString::Kind::Embedded)
        return std::make_unique<SqliteProvider>();
    return std::make_unique<OdbcProvider>();
}
