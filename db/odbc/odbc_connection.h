#pragma once

#include "db/dialect/dialect.h"
#include "db/odbc/odbc_api.h"
#include "db/odbc/odbc_target.h"
#include "db/provider.h"

#include <QList>
#include <QString>
#include <chrono>
#include <memory>

/// The environment and connection handles of one open connection; closes and frees them.
class OdbcConnection {
public:
    OdbcConnection() = default;
    ~OdbcConnection();
    OdbcConnection(const OdbcConnection &) = delete;
    OdbcConnection &operator=(const OdbcConnection &) = delete;

    SQLHDBC handle() const { return m_connection; }
    const QString &databaseName() const { return m_databaseName; }
    /// Asked of the driver, whatever the connection string calls it.
    SqlDialect dialect() const { return m_dialect; }
    /// The driver lets long values be fetched from any row of a block, in any order, bound or not.
    bool readsCellsOfBlocks() const { return m_readsCellsOfBlocks; }

    /// Logs in; blocks as long as the driver does. False leaves the diagnostics in `errors`.
    bool logIn(const OdbcTarget &target, std::chrono::seconds timeout, QList<ProviderError> &errors);

    bool setAutoCommit(bool on);
    bool endTransaction(bool commit);
    /// What the driver knows without asking the server.
    bool isDead() const;

private:
    bool allocate(QList<ProviderError> &errors);
    void learnAbout();
    QString textAbout(SQLUSMALLINT what) const;

    SQLHENV m_environment = nullptr;
    SQLHDBC m_connection = nullptr;
    bool m_loggedIn = false;
    bool m_readsCellsOfBlocks = false;
    QString m_databaseName;
    SqlDialect m_dialect = SqlDialect::SqlServer;
};

/// Logs in within `limit`. Null on failure.
std::unique_ptr<OdbcConnection> logInWithin(std::chrono::seconds limit, const OdbcTarget &target,
                                            QList<ProviderError> &errors);

/// QString's UTF-16 as ODBC wants it.
SQLWCHAR *odbcText(const QString &text);
