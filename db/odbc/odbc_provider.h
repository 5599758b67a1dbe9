#pragma once

#include "db/odbc/odbc_statement.h"
#include "db/provider.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

/// A database server reached through ODBC. Statements pass as they are to SQL Server, and rewritten to
/// PostgreSQL.
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
    SqlDialect dialect() const override;

    bool query(const QString &sql, Recordset &rows) override;
    bool execute(const QString &sql, qint64 *affected) override;
    bool executeAll(const QStringList &statements, QList<qint64> &affected) override;

    bool begin() override;
    bool commit() override;
    bool rollback() override;

    QString columnsSql() const override;
    QString indexesSql() const override;
    void setCommandTimeout(int seconds) override { m_commandTimeout = seconds; }

private:
    /// What is known of the data when the connection is lost in the middle of something.
    enum class Effect { None, Unknown };
    using Work = OdbcAnswer (*)(const std::shared_ptr<const OdbcConnection> &, const QString &, int);

    bool fail(QList<ProviderError> errors, Effect effect = Effect::None);
    bool failConnection(Effect effect = Effect::None);
    bool failInTransaction(const QList<ProviderError> &errors, Effect effect);
    bool notOpen();
    bool failLate(Effect effect);
    bool ask(Work work, const QString &sql, Effect effect, OdbcAnswer &answer);
    template <class T> std::optional<T> inTime(std::chrono::seconds limit, const std::function<T()> &work);
    bool inTime(bool (OdbcConnection::*work)(bool), bool argument, Effect effect = Effect::None);
    bool leaveTransaction();

    std::chrono::seconds m_loginLimit;
    std::shared_ptr<OdbcConnection> m_connection;
    QString m_password;
    int m_commandTimeout = 0;
    bool m_inTransaction = false;
};
