#include "db/tables/schema.h"
#include "tests/db/provider_contract.h"
#include "tests/odbc/postgres_server.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// One server for the whole run of the suite, with the tables, which bring the program's functions.
QString connectionOfRun() {
    static const PostgresServer server;
    static const bool ready = [] {
        EXPECT_EQ(server.problem().toStdString(), "");
        cT_ADODB db;
        db.iInit(server.connectionString());
        EXPECT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();
        const Result<bool> made = makeSchema(db);
        EXPECT_TRUE(made) << made.reason().toStdString();
        return bool(made);
    }();
    EXPECT_TRUE(ready);
    return server.connectionString();
}

ContractDatabase postgresDatabase() {
    return {.name = "PostgreSQL",
            .connectionString = connectionOfRun,
            .unreachable = u"Provider=PostgreSQL;Server=127.0.0.1;Port=%1;Database=postgres;User ID=nobody;"
                           u"Password=none"_s.arg(freePort()),
            .slowSelect = u"SELECT pg_sleep(20)"_s,
            .databaseName = u"postgres"_s};
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Odbc, ProviderContract, testing::Values(postgresDatabase()),
                         [](const auto &tested) { return std::string(tested.param.name); });
