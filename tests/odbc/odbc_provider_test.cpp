#include "db/adodb.h"
#include "db/odbc/odbc_drivers.h"
#include "db/odbc/odbc_provider.h"
#include "db/odbc/odbc_rows.h"
#include "db/odbc/odbc_statement.h"
#include "tests/odbc/postgres_server.h"
#include "tests/support/test_environment.h"

#include <QElapsedTimer>
#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class OdbcProviderTest : public testing::Test {
protected:
    static void SetUpTestSuite() { server = std::make_unique<PostgresServer>(); }
    static void TearDownTestSuite() { server.reset(); }

    void SetUp() override {
        ASSERT_EQ(server->problem(), u""_s);
        ASSERT_TRUE(db.open(server->connectionString())) << errorText(db);
    }

    static std::string errorText(const DbProvider &provider) {
        QString text;
        for (const ProviderError &error : provider.errors())
            text += u"%1 [%2] %3\n"_s.arg(error.number).arg(error.sqlState, error.description);
        return text.toStdString();
    }

    void run(const QString &sql) { ASSERT_TRUE(db.execute(sql, nullptr)) << errorText(db); }

    /// The only cell of a query.
    QString one(const QString &sql) {
        Recordset rows;
        EXPECT_TRUE(db.query(sql, rows)) << errorText(db);
        return rows.rowCount() == 1 ? rows.text(0, 0) : u"no row"_s;
    }

    static std::unique_ptr<PostgresServer> server;
    OdbcProvider db;
};

std::unique_ptr<PostgresServer> OdbcProviderTest::server;

} // namespace

TEST_F(OdbcProviderTest, EveryKindOfValueArrives) {
    const struct {
        QString expression;
        QString text;
    } cases[] = {
        {u"(-32768)::smallint"_s, u"-32768"_s},
        {u"2147483647"_s, u"2147483647"_s},
        {u"-9223372036854775808"_s, u"-9223372036854775808"_s},
        {u"true"_s, u"1"_s},
        {u"false"_s, u"0"_s},
        {u"0.1::float8"_s, u"0.1"_s},
        {u"-2.5::real"_s, u"-2.5"_s},
        {u"1234.5600::numeric(19,4)"_s, u"1234.56"_s},
        {u"-0.0100::numeric(19,4)"_s, u"-0.01"_s},
        {u"922337203685477.0000::numeric(19,4)"_s, u"922337203685477"_s},
        {u"12::numeric(10,0)"_s, u"12"_s},
        {u"repeat('9', 100)::numeric"_s, u"1e+100"_s},
        {u"'2026-11-21'::date"_s, u"2026/11/21"_s},
        {u"'0001-02-03'::date"_s, u"0001/02/03"_s},
        {u"'2026-11-21 00:00'::timestamp"_s, u"2026/11/21"_s},
        {u"'2026-11-21 09:08:07.065'::timestamp"_s, u"2026/11/21 09:08:07.065"_s},
        {u"'2026-11-21 09:08:07.065432'::timestamp"_s, u"2026/11/21 09:08:07.0654320"_s},
        {u"'2026-11-21 23:00'::timestamp"_s, u"2026/11/21 23:00:00.000"_s},
        {u"'12:34:56'::time"_s, u"12:34:56"_s},
        {u"'ab'::char(5)"_s, u"ab"_s},
        {u"'A01 '::varchar(5)"_s, u"A01"_s},
        {u"N'髙﨑 ﾔﾏﾀﾞ'::varchar(40)"_s, u"髙﨑 ﾔﾏﾀﾞ"_s},
        {u"'𠮟る😀'"_s, u"𠮟る😀"_s},
        {u"'it''s'"_s, u"it's"_s},
        {u"''"_s, u""_s},
        {u"'\\x0aff'::bytea"_s, u"0aff"_s},
        {u"null::int"_s, QString()},
        {u"null::varchar(5)"_s, QString()},
        {u"null::text"_s, QString()},
        {u"null::numeric(19,4)"_s, QString()},
        {u"null::timestamp"_s, QString()},
        {u"null::boolean"_s, QString()},
    };
    for (const auto &c : cases) {
        Recordset rows;
        ASSERT_TRUE(db.query(u"SELECT "_s + c.expression + u" AS x"_s, rows)) << errorText(db);
        ASSERT_EQ(rows.rowCount(), 1);
        EXPECT_EQ(rows.text(0, 0), c.text) << c.expression.toStdString();
        EXPECT_EQ(rows.isNull(0, 0), c.text.isNull()) << c.expression.toStdString();
    }
    EXPECT_EQ(one(u"SELECT 1 AS x WHERE 1 = 0"_s), u"no row"_s);
}

TEST_F(OdbcProviderTest, ARowIsFoundByTheTimeThatWasReadOfIt) {
    for (const QString &type : {u"timestamp(0)"_s, u"timestamp(3)"_s, u"timestamp(6)"_s}) {
        run(u"DROP TABLE IF EXISTS T; CREATE TABLE T AS SELECT clock_timestamp()::%1 AS t"_s.arg(type));
        const QString read = one(u"SELECT t FROM T"_s);
        EXPECT_EQ(one(u"SELECT count(*) FROM T WHERE t = '%1'"_s.arg(read)), u"1"_s)
            << type.toStdString() << ' ' << read.toStdString();
    }
}

/// Reads with the least and with the most that drivers can do.
class OdbcLongTextTest : public OdbcProviderTest, public testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(Drivers, OdbcLongTextTest, testing::Bool(), [](const auto &tested) {
    return tested.param ? std::string("CellsOfBlocks") : std::string("CellByCell");
});

TEST_P(OdbcLongTextTest, TextsOfAnyLengthArriveWhole) {
    QList<ProviderError> errors;
    const OdbcTarget target =
        odbcTarget(ConnectionString(server->connectionString()), installedOdbcDrivers());
    const auto connection = std::make_shared<OdbcConnection>();
    ASSERT_TRUE(connection->logIn(target, std::chrono::seconds(10), errors));
    const OdbcStatement statement(connection);
    // Lengths around the bound length, around a chunk of a long text, and well beyond; every third row Null.
    const QString sql =
        u"SELECT i, n, CASE WHEN i % 3 > 0 THEN repeat('𠮟', n) END AS long, n + 0.5 AS half,"
        u" repeat('a', n % 200)::varchar(200) AS short, CASE WHEN i % 3 > 0 THEN '終' END AS last"
        u" FROM (SELECT i, (array[0,1,127,128,129,255,256,4095,8191,8192,100000])[i % 11 + 1] AS n"
        u" FROM generate_series(0, 2999) AS i WHERE i % 11 < 10 OR i < 100) AS lengths"_s;
    ASSERT_TRUE(SQL_SUCCEEDED(SQLExecDirectW(statement.handle(), odbcText(sql), SQL_NTS)));
    OdbcRowReader reader(statement.handle(), GetParam());
    Recordset rows;
    ASSERT_TRUE(reader.readAll(rows));
    ASSERT_EQ(rows.rowCount(), 2737);
    const QString unit = u"𠮟"_s;
    for (int row = 0; row < rows.rowCount(); ++row) {
        const bool isNull = rows.number(row, 0) % 3 == 0;
        const int n = int(rows.number(row, 1));
        ASSERT_TRUE(rows.text(row, 2) == (isNull ? QString() : unit.repeated(n))) << row;
        ASSERT_EQ(rows.isNull(row, 2), isNull);
        ASSERT_EQ(rows.real(row, 3), n + 0.5);
        ASSERT_EQ(rows.text(row, 4).size(), n % 200);
        ASSERT_EQ(rows.text(row, 5), isNull ? QString() : u"終"_s);
    }
}

TEST_F(OdbcProviderTest, ErrorsHaveTheNumbersOfTheirKind) {
    run(u"CREATE TEMP TABLE t (a int PRIMARY KEY, b varchar(3) NOT NULL)"_s);
    run(u"INSERT INTO t VALUES (1, 'x')"_s);
    const struct {
        QString sql;
        qint32 number;
        QString state;
    } cases[] = {
        {u"INSERT INTO t VALUES (2, 'long')"_s, -2147217833, u"22001"_s},
        {u"SELECT '2026-02-30'::date"_s, -2147217913, u"22008"_s},
        {u"INSERT INTO t VALUES (7, 'y'); SELEC 1"_s, -2147217900, u"42601"_s},
        {u"UPDATE t SET b = 'z'; INSERT INTO t VALUES (1, 'y')"_s, -2147217873, u"23505"_s},
        {u"SELECT '同意書' FROM 無い表"_s, -2147217900, u"42P01"_s},
    };
    for (const auto &c : cases) {
        db.clearErrors();
        Recordset rows;
        EXPECT_FALSE(db.execute(c.sql, nullptr)) << c.sql.toStdString();
        ASSERT_FALSE(db.errors().isEmpty()) << c.sql.toStdString();
        EXPECT_EQ(db.errors().first().number, c.number) << errorText(db);
        EXPECT_EQ(db.errors().first().sqlState, c.state);
        EXPECT_TRUE(db.isOpen());
    }
    EXPECT_TRUE(db.errors().first().description.contains(u"無い表")) << errorText(db);
    Recordset rows;
    EXPECT_FALSE(db.query(u"SELECT 1 / (3 - i) FROM generate_series(1, 5) AS i"_s, rows));
    EXPECT_FALSE(rows.isOpen());
    EXPECT_FALSE(db.query(u"UPDATE t SET b = 'w'"_s, rows)) << "gives no rows";
    EXPECT_EQ(one(u"SELECT count(*) FROM t"_s), u"1"_s);
}

TEST_F(OdbcProviderTest, ACommitThatTheServerRefusesIsUndoneWhole) {
    run(u"CREATE TABLE IF NOT EXISTS kept (a int UNIQUE DEFERRABLE INITIALLY DEFERRED)"_s);
    run(u"DELETE FROM kept"_s);
    OdbcProvider other;
    ASSERT_TRUE(other.open(server->connectionString()));
    const auto seenByOther = [&] {
        Recordset rows;
        EXPECT_TRUE(other.query(u"SELECT count(*) FROM kept"_s, rows)) << errorText(other);
        return int(rows.number(0, 0));
    };

    run(u"INSERT INTO kept VALUES (1)"_s);
    // The server finds the duplicate when it commits.
    ASSERT_TRUE(db.begin());
    run(u"INSERT INTO kept VALUES (1), (3)"_s);
    db.clearErrors();
    EXPECT_FALSE(db.commit());
    ASSERT_FALSE(db.errors().isEmpty());
    EXPECT_EQ(db.errors().first().number, -2147217873) << errorText(db);
    EXPECT_EQ(seenByOther(), 1);

    // After a failed statement nothing may be committed, whatever the driver reports.
    ASSERT_TRUE(db.begin());
    run(u"INSERT INTO kept VALUES (4)"_s);
    EXPECT_FALSE(db.execute(u"SELEC 1"_s, nullptr));
    EXPECT_FALSE(db.commit());
    EXPECT_TRUE(db.rollback());
    EXPECT_EQ(seenByOther(), 1);
}

TEST_F(OdbcProviderTest, AServerThatDiesIsNoticedAndFoundAgain) {
    run(u"CREATE TABLE IF NOT EXISTS survivors (a int)"_s);
    const bool diesBeforeCommit[] = {false, true};
    for (const bool beforeCommit : diesBeforeCommit) {
        run(u"DELETE FROM survivors"_s);
        run(u"INSERT INTO survivors VALUES (1)"_s);
        ASSERT_TRUE(db.begin());
        run(u"INSERT INTO survivors VALUES (2)"_s);
        server->kill();
        db.clearErrors();
        if (beforeCommit) {
            EXPECT_FALSE(db.commit());
        } else {
            EXPECT_FALSE(db.execute(u"INSERT INTO survivors VALUES (3)"_s, nullptr));
        }
        EXPECT_FALSE(db.isOpen());
        EXPECT_FALSE(db.errors().isEmpty());
        EXPECT_FALSE(db.commit());
        EXPECT_FALSE(db.open(server->connectionString())) << "while the server is away";

        ASSERT_TRUE(server->start()) << server->problem().toStdString();
        ASSERT_TRUE(db.open(server->connectionString())) << errorText(db);
        EXPECT_EQ(one(u"SELECT count(*) FROM survivors"_s), u"1"_s);
    }
}

TEST_F(OdbcProviderTest, ACommitThatHangsIsGivenUp) {
    run(u"CREATE TABLE slow (a int)"_s);
    run(u"CREATE FUNCTION sleep() RETURNS trigger AS $$ BEGIN PERFORM pg_sleep(30); RETURN NEW; END $$"
        " LANGUAGE plpgsql"_s);
    run(u"CREATE CONSTRAINT TRIGGER sleeper AFTER INSERT ON slow DEFERRABLE INITIALLY DEFERRED"
        " FOR EACH ROW EXECUTE FUNCTION sleep()"_s);
    db.setCommandTimeout(1);
    ASSERT_TRUE(db.begin());
    run(u"INSERT INTO slow VALUES (1)"_s);
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(db.commit());
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_FALSE(db.isOpen()) << "the driver still waits on the old connection";
    ASSERT_FALSE(db.errors().isEmpty());
    EXPECT_TRUE(db.errors().first().description.contains(u"保存されたか分かりません")) << errorText(db);
    ASSERT_TRUE(db.open(server->connectionString())) << errorText(db);
    EXPECT_EQ(one(u"SELECT count(*) FROM slow"_s), u"0"_s);
}

TEST_F(OdbcProviderTest, AServerThatSaysNothingMoreIsGivenUp) {
    const pid_t session = one(u"SELECT pg_backend_pid()"_s).toInt();
    db.setCommandTimeout(1);
    ASSERT_EQ(::kill(session, SIGSTOP), 0);
    QElapsedTimer clock;
    clock.start();
    Recordset rows;
    EXPECT_FALSE(db.query(u"SELECT 1"_s, rows));
    EXPECT_LT(clock.elapsed(), 4000);
    EXPECT_FALSE(db.isOpen());
    EXPECT_EQ(::kill(session, SIGCONT), 0);
    ASSERT_TRUE(db.open(server->connectionString())) << errorText(db);
    EXPECT_EQ(one(u"SELECT 1"_s), u"1"_s);
}

TEST_F(OdbcProviderTest, ASessionThatTheServerEndsIsNoticed) {
    const QString session = one(u"SELECT pg_backend_pid()"_s);
    OdbcProvider administrator;
    ASSERT_TRUE(administrator.open(server->connectionString()));
    ASSERT_TRUE(db.begin());
    ASSERT_TRUE(administrator.execute(u"SELECT pg_terminate_backend(%1, 5000)"_s.arg(session), nullptr));
    EXPECT_FALSE(db.execute(u"SELECT 1"_s, nullptr));
    EXPECT_FALSE(db.isOpen()) << errorText(db);
    EXPECT_TRUE(db.open(server->connectionString())) << errorText(db);
}

TEST_F(OdbcProviderTest, AWrongPasswordIsNotRepeated) {
    OdbcProvider other;
    EXPECT_FALSE(other.open(server->connectionString(u"douisho-falsch"_s)));
    EXPECT_FALSE(other.isOpen());
    ASSERT_FALSE(other.errors().isEmpty());
    EXPECT_TRUE(other.errors().first().description.contains(u"サーバー「127.0.0.1」")) << errorText(other);
    EXPECT_TRUE(other.errors().first().description.contains(u"password authentication failed"));
    EXPECT_EQ(errorText(other).find("falsch"), std::string::npos);
}

TEST_F(OdbcProviderTest, TheConnectionClassRecoversFromALostServer) {
    cT_ADODB ado;
    ado.iInit(server->connectionString());
    ASSERT_EQ(ado.iConnect(), 0) << ado.sErrMsg().toStdString();
    EXPECT_EQ(ado.sDbName(), u"postgres"_s);
    EXPECT_EQ(ado.sErrMsg(), u""_s);
    // A failed statement ends its transaction, and the next one may begin.
    ASSERT_EQ(ado.iBeginTrans(), 0);
    EXPECT_EQ(ado.iExecSQL(u"SELEC 1"_s), -1);
    EXPECT_EQ(ado.iRollback(), 0);
    ASSERT_EQ(ado.iBeginTrans(), 0);

    server->kill();
    const qsizetype before = ado.sErrMsg().size();
    EXPECT_EQ(ado.iExecSQL(u"CREATE TABLE lost (a int)"_s), -1);
    EXPECT_TRUE(ado.sErrMsg().mid(before).startsWith(u"\rConnection State=0\rError Number: -2147467259\r"))
        << ado.sErrMsg().toStdString();
    EXPECT_FALSE(ado.isConnected());
    EXPECT_EQ(ado.iRollback(), 0);
    EXPECT_EQ(ado.iConnect(), -1) << "the server is away";

    ASSERT_TRUE(server->start()) << server->problem().toStdString();
    ASSERT_EQ(ado.iConnect(), 0) << ado.sErrMsg().toStdString();
    Recordset rows;
    EXPECT_EQ(ado.iOpenRecSet(rows, u"SELECT '同意' AS x"_s), 0);
    EXPECT_EQ(rows.text(0, 0), u"同意"_s);

    // The server comes back between two readings; in a transaction nothing is read a second time.
    for (const bool inTransaction : {false, true}) {
        ASSERT_TRUE(!inTransaction || ado.iBeginTrans() == 0);
        server->kill();
        ASSERT_TRUE(server->start()) << server->problem().toStdString();
        EXPECT_EQ(ado.iOpenRecSet(rows, u"SELECT 1 AS x"_s), inTransaction ? -1 : 0);
    }
    EXPECT_TRUE(ado.sErrMsg().contains(u"接続が切れました。データは変更されていません。"))
        << ado.sErrMsg().toStdString();
}
