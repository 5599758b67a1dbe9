#pragma once

#include "db/odbc/odbc_connection.h"
#include "db/provider.h"

#include <chrono>
#include <memory>

/// A database server reached through ODBC. Statements pass as they are.
class OdbcProvider : public DbProvider {
public:
    /// @param loginLimit seconds after which a log-in is given up, when the connection string sets none
    ///        that is shorter
    explicit OdbcProvider(
        std::chrono::seconds loginLimit = std::chrono::seconds(OdbcTarget::maxLoginSeconds));
    ~OdbcProvider() override;

    bool open(const QString &connectionString) override;
    void close() override;
    bool isOpen() const override { return m_connection != nullptr; }
    QString databaseName() const override;

    bool query(const QString &sql, Recordset &rows) override;
    bool execute(const QString &sql, qint64 *affected) override;

    bool begin() override;
    bool commit() override;
    bool rollback() override;

    void setCommandTimeout(int seconds) override { m_commandTimeout = seconds; }

private:
    bool fail(QList<ProviderError> errors);
    bool failStatement(const OdbcStatement &statement);
    bool failConnection();
    bool notOpen();
    bool run(const OdbcStatement &statement, const QString &sql);
    bool failInTransaction(const QList<ProviderError> &errors);
    bool leaveTransaction();

    std::chrono::seconds m_loginLimit;
    std::shared_ptr<OdbcConnection> m_connection;
    QString m_password;
    int m_commandTimeout = 0;
    bool m_inTransaction = false;
};
