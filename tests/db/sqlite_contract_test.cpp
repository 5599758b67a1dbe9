#include "tests/db/provider_contract.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace {

/// One database file for the whole run of the suite; SQLite takes an empty file for an empty database.
QString fileOfRun() {
    static const QTemporaryDir folder;
    const QString path = folder.filePath(u"契約 contract.db"_s);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    return path;
}

ContractDatabase sqliteDatabase() {
    return {.name = "SQLite",
            .connectionString = [] { return u"Provider=SQLite;Data Source="_s + fileOfRun(); },
            .unreachable = u"Provider=SQLite;Data Source=/nowhere/missing.db"_s,
            .slowSelect = u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                          "SELECT count(*) FROM n"_s,
            .databaseName = u"契約 contract"_s};
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Sqlite, ProviderContract, testing::Values(sqliteDatabase()),
                         [](const auto &tested) { return std::string(tested.param.name); });
