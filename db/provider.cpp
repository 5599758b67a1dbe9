#include "db/provider.h"

#include "db/connection_string.h"
#include "db/odbc/odbc_provider.h"
#include "db/sqlite/sqlite_provider.h"

#include <algorithm>

bool DbProvider::executeAll(const QStringList &statements, QList<qint64> &affected) {
    affected.clear();
    return std::ranges::all_of(statements, [&](const QString &sql) {
        qint64 changed = 0;
        const bool done = execute(sql, &changed);
        affected.append(changed);
        return done;
    });
}

bool saysDeadlock(const QList<ProviderError> &errors) {
    constexpr qint32 deadlockVictim = 1205; // SQL Server's number
    return std::ranges::any_of(errors, [](const ProviderError &error) {
        return error.sqlState == u"40001" || error.sqlState == u"40P01" ||
               error.nativeError == deadlockVictim;
    });
}

std::unique_ptr<DbProvider> makeProvider(const QString &connectionString) {
    if (ConnectionString(connectionString).kind() == ConnectionString::Kind::Embedded)
        return std::make_unique<SqliteProvider>();
    return std::make_unique<OdbcProvider>();
}

QString DbProvider::columnsSql() const {
    return QStringLiteral("SELECT TABLE_NAME, COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH"
                          " FROM INFORMATION_SCHEMA.COLUMNS"
                          " WHERE TABLE_SCHEMA IN (SCHEMA_NAME(), 'dbo')");
}

QString DbProvider::indexesSql() const {
    return QStringLiteral(
        "SELECT sys.tables.name AS T, sys.indexes.name AS I, sys.columns.name AS C FROM sys.index_columns"
        " JOIN sys.indexes ON sys.indexes.object_id = sys.index_columns.object_id"
        " AND sys.indexes.index_id = sys.index_columns.index_id"
        " JOIN sys.tables ON sys.tables.object_id = sys.index_columns.object_id"
        " JOIN sys.columns ON sys.columns.object_id = sys.index_columns.object_id"
        " AND sys.columns.column_id = sys.index_columns.column_id"
        " WHERE sys.index_columns.key_ordinal > 0"
        " ORDER BY sys.tables.name, sys.indexes.name, sys.index_columns.key_ordinal");
}
