#pragma once

#include "db/adodb.h"

#include <gtest/gtest.h>

/// A database that the contract is tried on, and how its SQL differs.
struct ContractDatabase {
    const char *name;
    /// Of a database that the tests may fill; called once a connection.
    QString (*connectionString)();
    /// Leads nowhere, and is refused within seconds.
    QString unreachable;
    QString slowSelect;   ///< a SELECT that runs for at least 20 seconds
    QString databaseName; ///< what sDbName gives

    friend void PrintTo(const ContractDatabase &database, std::ostream *out) { *out << database.name; }
};

/// What cT_ADODB promises of every provider. A room that has one instantiates the suite with its database:
///     INSTANTIATE_TEST_SUITE_P(Name, ProviderContract, testing::Values(…));
/// Each case begins with an empty table CONTRACT (nNo key, cText, cLong, nCount not Null, dReal).
class ProviderContract : public testing::TestWithParam<ContractDatabase> {
protected:
    void SetUp() override;
    void TearDown() override;

    void connect(cT_ADODB &connection) const;
    /// Runs a statement that must work.
    void run(const QString &sql);
    /// The only cell of a query that must work.
    QString one(const QString &sql) { return oneOf(db, sql); }
    static QString oneOf(cT_ADODB &connection, const QString &sql);
    /// What sErrMsg grew by since the last call.
    QString newErrors();

    cT_ADODB db;

private:
    qsizetype m_seenErrors = 0;
};
