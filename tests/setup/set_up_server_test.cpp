#include "setup/set_up.h"

#include "app/base/folders.h"
#include "db/adodb.h"
#include "db/connection_settings.h"
#include "sample/server_database.h"
#include "setup/practice_query.h"
#include "tests/odbc/postgres_server.h"
#include "tests/support/test_environment.h"

#include <array>
#include <gtest/gtest.h>
#include <thread>

using namespace Qt::Literals::StringLiterals;
using setup::Answers;

namespace {

/// Empty program folders before one PostgreSQL server.
class SetUpOnAServer : public testing::Test {
protected:
    static void SetUpTestSuite() { server = new PostgresServer; }
    static void TearDownTestSuite() { delete server; }
    void SetUp() override {
        if (!server->problem().isEmpty())
            GTEST_SKIP() << server->problem().toStdString();
    }

    static Answers answersFor(const QString &database) {
        Answers answers;
        answers.engine = setup::Engine::PostgreSql;
        answers.server = u"127.0.0.1,%1"_s.arg(server->port());
        answers.database = database;
        answers.user = u"douisho"_s;
        answers.password = QLatin1String(PostgresServer::rightPassword);
        answers.practice.name = u"あおば治療院"_s;
        return answers;
    }
    static Result<> makeSample(const QString &connection) {
        return sample::makeSampleAt(connection, QDate(2026, 11, 21), 20);
    }
    static Result<bool> setUpOnAPc(const Answers &answers) {
        const QTemporaryDir folder;
        const Result<bool> made =
            setup::setUp(Folders(folder.path()), answers, QDate(2026, 11, 21), {}, makeSample);
        EXPECT_EQ(hasConnectionSettings(Folders(folder.path())), bool(made));
        return made;
    }
    static void run(const QString &sql, const QString &database = u"postgres"_s) {
        cT_ADODB db;
        db.iInit(*setup::connectionOf(answersFor(database)));
        EXPECT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();
        EXPECT_EQ(db.iExecSQL(sql), 0) << db.sErrMsg().toStdString();
    }

    static inline PostgresServer *server = nullptr;
};

} // namespace

TEST_F(SetUpOnAServer, SeveralPcsAtOnceMakeOnePracticeAndOthersJoinIt) {
    const struct {
        bool sample;
        qint64 branches, patients;
    } cases[] = {{false, 2, 0}, {true, 4, 20}};
    for (const auto &[sample, branches, patients] : cases) {
        const QString database = sample ? u"mihon"_s : u"kara"_s;
        run(u"CREATE DATABASE %1 ENCODING 'UTF8' TEMPLATE template0"_s.arg(database));
        Answers answers = answersFor(database);
        answers.sample = sample;
        EXPECT_TRUE(setup::tryConnection(answers)->isNew);
        std::array<Result<bool>, 3> made{false, false, false};
        {
            std::vector<std::jthread> pcs;
            for (Result<bool> &one : made)
                pcs.emplace_back([&] { one = setUpOnAPc(answers); });
        }
        int makers = 0;
        for (const Result<bool> &one : made) {
            EXPECT_TRUE(one) << one.reason().toStdString();
            makers += one && *one;
        }
        EXPECT_EQ(makers, 1);
        EXPECT_FALSE(setup::tryConnection(answers)->isNew);
        cT_ADODB db;
        db.iInit(*setup::connectionOf(answers));
        EXPECT_EQ(*setup::countRows(db, u"KYOTEN"_s), branches);
        EXPECT_EQ(*setup::countRows(db, u"RIYOUSHA"_s), patients);
        EXPECT_GE(*setup::countRows(db, u"HOLIDAY WHERE iYear = 2026 AND iKyotenCd = 1"_s), 18);
    }
}

TEST_F(SetUpOnAServer, TablesWithoutAPracticeAreFinished) {
    run(u"CREATE DATABASE halfway ENCODING 'UTF8' TEMPLATE template0"_s);
    const Answers answers = answersFor(u"halfway"_s);
    ASSERT_TRUE(setUpOnAPc(answers));
    run(u"DELETE FROM CORP_SUB; DELETE FROM KYOTEN; DELETE FROM CORP; DELETE FROM HOLIDAY; DELETE FROM CODE; "
        "DELETE FROM SHINSEISYO"_s,
        u"halfway"_s);
    EXPECT_TRUE(setup::tryConnection(answers)->said.contains(u"続きを作成します。"_s));
    const Result<bool> made = setUpOnAPc(answers);
    EXPECT_TRUE(made && *made) << made.reason().toStdString();
}

TEST_F(SetUpOnAServer, WhatIsWrongIsSaidAndNothingIsMade) {
    run(u"CREATE DATABASE latin ENCODING 'LATIN1' LC_COLLATE 'C' LC_CTYPE 'C' TEMPLATE template0"_s);
    run(u"CREATE DATABASE theirs ENCODING 'UTF8' TEMPLATE template0"_s);
    run(u"CREATE TABLE kyoten (name text)"_s, u"theirs"_s);
    run(u"CREATE DATABASE closed ENCODING 'UTF8' TEMPLATE template0"_s);
    run(u"CREATE ROLE reader LOGIN PASSWORD 'Geheim-42'"_s);
    run(u"REVOKE CREATE ON SCHEMA public FROM PUBLIC"_s, u"closed"_s);

    Answers stranger = answersFor(u"postgres"_s), reader = answersFor(u"closed"_s), nowhere = reader;
    stranger.password = u"falsch"_s;
    reader.user = u"reader"_s;
    nowhere.server = u"127.0.0.1,%1"_s.arg(freePort());
    const struct {
        Answers answers;
        QStringList said;
    } cases[] = {
        {stranger, {u"ユーザー名かパスワードが違います。"_s}},
        {nowhere, {u"サーバーにつながりません。"_s}},
        {answersFor(u"none"_s), {u"データベースかユーザーがありません。"_s, u"none"_s}},
        {answersFor(u"latin"_s), {u"文字コードが LATIN1 です。"_s}},
        {answersFor(u"theirs"_s), {u"別のプログラムの表があります。空のデータベースを指定してください。"_s}},
        {reader, {u"何も作成していません。"_s, u"権限がありません。"_s}}};
    for (const auto &[answers, said] : cases) {
        const Result<setup::Trial> trial = setup::tryConnection(answers);
        const QString why = trial ? setUpOnAPc(answers).reason() : trial.reason();
        for (const QString &part : said)
            EXPECT_TRUE(why.contains(part)) << why.toStdString();
        EXPECT_FALSE(setUpOnAPc(answers));
    }
}
