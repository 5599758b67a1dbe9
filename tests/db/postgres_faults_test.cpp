#include "db/tables/schema.h"
#include "tests/odbc/postgres_server.h"
#include "tests/support/test_environment.h"

#include <barrier>
#include <future>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A server whose databases the tests damage.
class PostgresFaults : public testing::Test {
protected:
    static void SetUpTestSuite() { server = std::make_unique<PostgresServer>(); }
    static void TearDownTestSuite() { server.reset(); }

    void SetUp() override {
        ASSERT_EQ(server->problem(), u""_s);
        ASSERT_EQ(connect(db, u"postgres"_s), 0) << db.sErrMsg().toStdString();
    }

    static short connect(cT_ADODB &connection, const QString &database, const QString &user = u"douisho"_s) {
        QString text =
            server->connectionString(QString(QLatin1String(PostgresServer::rightPassword)), database);
        connection.iInit(text.replace(u"User ID=douisho"_s, u"User ID="_s + user));
        return connection.iConnect();
    }

    void run(const QString &sql) { ASSERT_EQ(db.iExecSQL(sql), 0) << db.sErrMsg().toStdString(); }

    /// A new database with the suite's tables.
    void makeSuite(const QString &name, cT_ADODB &connection) {
        run(u"CREATE DATABASE "_s + name);
        ASSERT_EQ(connect(connection, name), 0) << connection.sErrMsg().toStdString();
        const Result<bool> made = makeSchema(connection);
        ASSERT_TRUE(made && *made) << made.reason().toStdString();
    }

    static std::string whyNot(cT_ADODB &connection, const QString &sql) {
        const ErrorsSince errors(connection);
        EXPECT_EQ(connection.iExecSQL(sql), -1) << sql.toStdString();
        return errors.text().toStdString();
    }

    static std::unique_ptr<PostgresServer> server;
    cT_ADODB db;
};

std::unique_ptr<PostgresServer> PostgresFaults::server;

#define EXPECT_SAYS(text, part) EXPECT_NE((text).find(part), std::string::npos) << (text)

} // namespace

TEST_F(PostgresFaults, ADatabaseThatDoesNotKeepUtf8IsRefused) {
    run(u"CREATE DATABASE euc ENCODING 'EUC_JP' LC_COLLATE 'C' LC_CTYPE 'C' TEMPLATE template0"_s);
    cT_ADODB other;
    EXPECT_EQ(connect(other, u"euc"_s), -1);
    EXPECT_FALSE(other.isConnected());
    EXPECT_SAYS(other.sErrMsg().toStdString(), "文字コードが EUC_JP です");
}

TEST_F(PostgresFaults, WhatAnAccountMayNotDoIsSaidAndLeavesNothingHalfMade) {
    cT_ADODB suite, reader;
    makeSuite(u"rights"_s, suite);
    run(u"CREATE ROLE reader LOGIN PASSWORD 'Geheim-42'"_s);
    ASSERT_EQ(suite.iExecSQL(u"GRANT SELECT ON KYOTEN TO reader"_s), 0);
    ASSERT_EQ(connect(reader, u"rights"_s, u"reader"_s), 0) << reader.sErrMsg().toStdString();
    EXPECT_SAYS(whyNot(reader, u"DELETE FROM KYOTEN"_s), "データベースの権限がありません。");

    run(u"CREATE DATABASE empty"_s);
    ASSERT_EQ(connect(reader, u"empty"_s, u"reader"_s), 0);
    reader.iDisConnect();
    ASSERT_EQ(connect(reader, u"empty"_s, u"reader"_s), 0);
    const Result<bool> made = makeSchema(reader);
    ASSERT_FALSE(made);
    EXPECT_SAYS(made.reason().toStdString(), "何も作成していません。");
}

TEST_F(PostgresFaults, TablesThatAreThereAlreadyAreNeitherTouchedNorAddedTo) {
    run(u"CREATE DATABASE half"_s);
    cT_ADODB half;
    ASSERT_EQ(connect(half, u"half"_s), 0);
    ASSERT_EQ(half.iExecSQL(u"CREATE TABLE STAFF (n int)"_s), 0);
    EXPECT_FALSE(makeSchema(half));
    EXPECT_SAYS(whyNot(half, u"DELETE FROM KYOTEN"_s), "データベースに表がありません。");
    EXPECT_EQ(half.iExecSQL(u"DROP TABLE STAFF"_s), 0);
    EXPECT_TRUE(*makeSchema(half));
    EXPECT_FALSE(*makeSchema(half)) << "they are there";
    ASSERT_EQ(half.iExecSQL(u"ALTER TABLE STAFF DROP COLUMN cName"_s), 0);
    EXPECT_SAYS(whyNot(half, u"UPDATE STAFF SET cName = 'x'"_s), "データベースの表に列がありません。");
}

TEST_F(PostgresFaults, OfTwoPcsThatMakeTheTablesAtOnceOneDoesAndBothHaveThem) {
    run(u"CREATE DATABASE two_pcs"_s);
    std::barrier start(2);
    const auto make = [&] {
        cT_ADODB mine;
        EXPECT_EQ(connect(mine, u"two_pcs"_s), 0);
        start.arrive_and_wait();
        const Result<bool> made = makeSchema(mine);
        EXPECT_TRUE(made) << made.reason().toStdString();
        EXPECT_EQ(mine.iExecSQL(u"DELETE FROM RIYOUSHA"_s), 0) << mine.sErrMsg().toStdString();
        return made && *made;
    };
    auto other = std::async(std::launch::async, make);
    const bool here = make();
    EXPECT_NE(here, other.get());
}

TEST_F(PostgresFaults, ATextThatIsTooLongIsRefusedWithoutTheRowBeingTold) {
    cT_ADODB suite;
    makeSuite(u"lengths"_s, suite);
    const QString insert = u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana)"
                           u" VALUES (1, 1, 1, '秘密', '%1')"_s;
    const std::string why = whyNot(suite, insert.arg(QString(1000, u'ｱ')));
    EXPECT_SAYS(why, "文字が長すぎる");
    EXPECT_SAYS(why, "cnamekana");
    EXPECT_EQ(why.find("秘密"), std::string::npos) << why;

    // The server counts units of UTF-16 for NVARCHAR and bytes of code page 932 for VARCHAR.
    ASSERT_EQ(suite.iExecSQL(u"CREATE TABLE L (cN NVARCHAR(4), cB VARCHAR(4))"_s), 0);
    const std::pair<QString, bool> texts[] = {
        {u"'𠮷𠮷', 'ab'"_s, true},  {u"'𠮷𠮷a', 'ab'"_s, false}, {u"'漢字漢字', '漢字'"_s, true},
        {u"'a', '漢字a'"_s, false}, {u"'a', 'ｱｲｳｴ'"_s, true},    {u"'abcd   ', 'abcd '"_s, true}};
    for (const auto &[values, fits] : texts)
        EXPECT_EQ(suite.iExecSQL(u"INSERT INTO L VALUES (%1)"_s.arg(values)) == 0, fits)
            << values.toStdString();
}

// The last one: the server is another one afterwards.
TEST_F(PostgresFaults, AServerInRecoveryIsReadAndSaysWhyItIsNotWritten) {
    cT_ADODB suite;
    makeSuite(u"standby"_s, suite);
    run(u"CHECKPOINT"_s);
    Recordset rows;
    ASSERT_EQ(db.iOpenRecSet(rows, u"SELECT current_setting('data_directory')"_s), 0);
    run(u"COPY (SELECT 1) TO '%1/standby.signal'"_s.arg(rows.text(0, 0)));
    server->kill();
    ASSERT_TRUE(server->start()) << server->problem().toStdString();
    ASSERT_EQ(suite.iExecSQL(u"SELECT 1"_s), -1) << "the connection went with the server";
    ASSERT_EQ(suite.iConnect(), 0) << suite.sErrMsg().toStdString();
    EXPECT_EQ(suite.iOpenRecSet(rows, u"SELECT COUNT(*) FROM KYOTEN"_s), 0) << suite.sErrMsg().toStdString();
    EXPECT_SAYS(whyNot(suite, u"DELETE FROM KYOTEN"_s), "読み取り専用");
    EXPECT_TRUE(suite.isConnected());
}
