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
