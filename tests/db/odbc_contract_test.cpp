#include "tests/db/provider_contract.h"
#include "tests/odbc/postgres_server.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// One server for the whole run of the suite.
QString connectionOfRun() {
    static const PostgresServer server;
    EXPECT_EQ(server.problem().toStdString(), "");
    return server.connectionString();
}

ContractDatabase postgresDatabase() {
    return {.name = "PostgreSQL",
            .connectionString = connectionOfRun,
            .unreachable = u"Driver=%1;Server=127.0.0.1;Port=%2;Database=postgres;UID=nobody;PWD=none"_s.arg(
                odbcDriverLibrary(u"psqlodbcw.so"_s), QString::number(freePort())),
            .slowSelect = u"SELECT pg_sleep(20)"_s,
            .databaseName = u"postgres"_s};
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Odbc, ProviderContract, testing::Values(postgresDatabase()),
                         [](const auto &tested) { return std::string(tested.param.name); });
