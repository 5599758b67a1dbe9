#include "tests/db/provider_contract.h"

#include "db/sql_text.h"
#include "tests/support/test_environment.h"

#include <QElapsedTimer>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

// Linked into executables that need not have every provider.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ProviderContract);

namespace {

constexpr qint32 errorsInCommand = -2147217900;
constexpr qint32 integrityViolation = -2147217873;
constexpr qint32 timedOut = -2147217871;

/// The log of one provider error, to the letter; "Error Number" and the words in the description are given.
void expectLog(const QString &log, int state, qint32 number, const QString &mentioned) {
    const QString form = u"^\rConnection State=%1\rError Number: %2\r  Description: [^\r]*%3[^\r]*"
                         "\r  Source: [^\r]+\r  SQL State: [0-9A-Z]{5}\r  Native Error: -?\\d+"
                         "\r\r1 provider error\\(s\\) occurred\\.$"_s;
    const QRegularExpression exact(form.arg(state).arg(number).arg(QRegularExpression::escape(mentioned)),
                                   QRegularExpression::DotMatchesEverythingOption |
                                       QRegularExpression::DontCaptureOption);
    EXPECT_TRUE(exact.match(log).hasMatch()) << QString(log).replace(u'\r', u'\n').toStdString();
}

} // namespace

void ProviderContract::SetUp() {
    connect(db);
    db.iExecSQL(u"DROP TABLE CONTRACT"_s); // there may be none
    run(u"CREATE TABLE CONTRACT (nNo int NOT NULL PRIMARY KEY, cText varchar(100), cLong text,"
        " nCount bigint DEFAULT 0 NOT NULL, dReal double precision)"_s);
    newErrors();
}

void ProviderContract::TearDown() {
    db.iDisConnect();
}

void ProviderContract::connect(cT_ADODB &connection) const {
    connection.iInit(GetParam().connectionString());
    ASSERT_EQ(connection.iConnect(), 0) << connection.sErrMsg().toStdString();
}

void ProviderContract::run(const QString &sql) {
    ASSERT_EQ(db.iExecSQL(sql), 0) << newErrors().toStdString();
}

QString ProviderContract::oneOf(cT_ADODB &connection, const QString &sql) {
    Recordset rows;
    EXPECT_EQ(connection.iOpenRecSet(rows, sql), 0) << connection.sErrMsg().toStdString();
    return rows.rowCount() == 1 ? rows.text(0, 0) : u"not one row"_s;
}

QString ProviderContract::newErrors() {
    const QString grown = db.sErrMsg().mid(m_seenErrors);
    m_seenErrors = db.sErrMsg().size();
    return grown;
}

TEST_P(ProviderContract, TextsComeBackAsTheyWereWritten) {
    const QString texts[] = {
        QString(), // Null stays apart from the empty text
        u""_s,
        u"it's ''quoted''"_s,
        u"100%_[a]\\n"_s,
        u"二行\r\n目"_s,
        u"C:\\\r\n\\\n𠮷\\\r\n"_s, // a backslash at a line's end
        u"髙橋 﨑田 ﾔﾏﾀﾞ 〜−"_s,
        u"𠮷野家で𠮟る😀"_s,
        u"トップ TOP 1 + N'x' -- ISNULL(a,b)"_s,
    };
    int no = 0;
    for (const QString &text : texts)
        run(u"INSERT INTO CONTRACT (nNo, cText, cLong) VALUES (%1, %2, %2)"_s.arg(QString::number(++no),
                                                                                  sqlText(text)));
    Recordset rows;
    ASSERT_EQ(db.iOpenRecSet(rows, u"SELECT cText, cLong FROM CONTRACT ORDER BY nNo"_s), 0);
    ASSERT_EQ(rows.rowCount(), int(std::size(texts)));
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (int column = 0; column < 2; ++column) {
            EXPECT_EQ(rows.text(row, column), texts[row]) << row;
            EXPECT_EQ(rows.isNull(row, column), texts[row].isNull()) << row;
        }
        EXPECT_FALSE(cT_ADODB::csNull(rows, row, 0).isNull());
    }
}

TEST_P(ProviderContract, ASearchFindsAllWaysOfWritingANameAndTakesSignsAsTheyStand) {
    const QString texts[] = {u"山崎"_s, u"山﨑"_s,  u"𠮷田"_s, u"吉田"_s,     u"渡邊"_s, u"渡邉"_s,
                             u"渡辺"_s, u"a[b]!"_s, u"a\\b"_s, u"福\uFA1B"_s, u"ab"_s};
    int no = 0;
    for (const QString &text : texts)
        run(u"INSERT INTO CONTRACT (nNo, cText) VALUES (%1, %2)"_s.arg(QString::number(++no), sqlText(text)));
    const std::pair<QString, QString> searches[] = {
        {u"崎"_s, u"1 2"_s},  {u"﨑"_s, u"1 2"_s},  {u"𠮷"_s, u"3 4"_s}, {u"渡邉"_s, u"5 6 7"_s},
        {u"福福"_s, u"10"_s}, {u"a[b]!"_s, u"8"_s}, {u"\\b"_s, u"9"_s},  {u"a%b"_s, u"8 9 11"_s}};
    for (const auto &[text, numbers] : searches) {
        Recordset rows;
        ASSERT_EQ(db.iOpenRecSet(rows, u"SELECT nNo FROM CONTRACT WHERE "_s + sqlContains(u"cText"_s, text) +
                                           u" ORDER BY nNo"_s),
                  0);
        QStringList found;
        for (int row = 0; row < rows.rowCount(); ++row)
            found += rows.text(row, 0);
        EXPECT_EQ(found.join(u' '), numbers) << text.toStdString();
    }
    EXPECT_EQ(one(u"SELECT nNo FROM CONTRACT WHERE cText = '山崎'"_s), u"1"_s) << "a key is not a search";
}

TEST_P(ProviderContract, LongTextsComeBackWhole) {
    const QString unit = u"同意書𠮷の備考、"_s;
    const qsizetype megabyte = 1 << 20; // in characters, some three megabytes of UTF-8
    const QString text = unit.repeated(megabyte / unit.size());
    run(u"INSERT INTO CONTRACT (nNo, cLong) VALUES (1, %1)"_s.arg(sqlText(text)));
    run(u"INSERT INTO CONTRACT (nNo, cLong) VALUES (2, 'short')"_s);
    Recordset rows;
    ASSERT_EQ(db.iOpenRecSet(rows, u"SELECT cLong FROM CONTRACT ORDER BY nNo"_s), 0);
    EXPECT_TRUE(rows.text(0, 0) == text) << rows.text(0, 0).size();
    EXPECT_EQ(rows.text(1, 0), u"short"_s);
}

TEST_P(ProviderContract, NumbersComeBackAsTheyWereWritten) {
    const qint64 numbers[] = {0, -1, 32767, 32768, 20261121, INT64_MAX, INT64_MIN + 1};
    for (const qint64 number : numbers) {
        run(u"DELETE FROM CONTRACT"_s);
        run(u"INSERT INTO CONTRACT (nNo, cText, nCount, dReal) VALUES (1, '%1', %1, 0.25)"_s.arg(number));
        Recordset rows;
        ASSERT_EQ(db.iOpenRecSet(rows, u"SELECT nCount, dReal, cText, cLong FROM CONTRACT"_s), 0);
        EXPECT_EQ(cT_ADODB::mNull(rows, 0, 0), number);
        EXPECT_EQ(rows.text(0, 0), QString::number(number));
        EXPECT_EQ(rows.real(0, 1), 0.25);
        EXPECT_EQ(rows.text(0, 1), u"0.25"_s);
        EXPECT_EQ(rows.text(0, 2), QString::number(number));
        EXPECT_EQ(cT_ADODB::mNull(rows, 0, 3), 0) << "Null";
        EXPECT_EQ(cT_ADODB::iNull(rows, 0, 3), 0) << "Null";
        EXPECT_FALSE(cT_ADODB::tNull(rows, 0, 3).isValid()) << "Null";
    }
}

TEST_P(ProviderContract, ARecordsetHasItsColumnsEvenWithoutRows) {
    Recordset rows;
    ASSERT_EQ(db.iOpenRecSet(rows, u"SELECT nNo, cText AS 氏名 FROM CONTRACT"_s), 0);
    EXPECT_TRUE(rows.isOpen());
    EXPECT_EQ(rows.rowCount(), 0);
    EXPECT_EQ(rows.column(u"NNO"), 0);
    EXPECT_EQ(rows.column(u"氏名"), 1);
    EXPECT_EQ(rows.column(u"cText"), -1);
    EXPECT_EQ(db.iCloseRecSet(rows), 0);
    EXPECT_FALSE(rows.isOpen());
}

TEST_P(ProviderContract, AffectedRowsAreCounted) {
    const struct {
        QString sql;
        qint64 affected;
    } cases[] = {
        {u"INSERT INTO CONTRACT (nNo) VALUES (1), (2), (3)"_s, 3},
        {u"UPDATE CONTRACT SET nCount = 5 WHERE nNo > 1"_s, 2},
        {u"UPDATE CONTRACT SET nCount = 5 WHERE nNo > 99"_s, 0},
        {u"INSERT INTO CONTRACT (nNo) SELECT nNo + 10 FROM CONTRACT"_s, 3},
        {u"DELETE FROM CONTRACT WHERE nNo = 99"_s, 0},
        {u"DELETE FROM CONTRACT"_s, 6},
        {u"DROP TABLE IF EXISTS CONTRACT"_s, 0},
    };
    for (const auto &c : cases) {
        qint64 affected = -1;
        EXPECT_EQ(db.iExecSQL(c.sql, &affected), 0) << newErrors().toStdString();
        EXPECT_EQ(affected, c.affected) << c.sql.toStdString();
    }
}

TEST_P(ProviderContract, AFailedStatementIsLoggedToTheLetter) {
    run(u"INSERT INTO CONTRACT (nNo) VALUES (1)"_s);
    const struct {
        QString sql;
        qint32 number;
        QString mentioned;
    } cases[] = {
        {u"SELECT * FROM missing_table"_s, errorsInCommand, u"missing_table"_s},
        {u"SELECT * FROM 無い表"_s, errorsInCommand, u"無い表"_s},
        {u"SELECT missing_column FROM CONTRACT"_s, errorsInCommand, u"missing_column"_s},
        {u"INSERT INTO CONTRACT (missing_column) VALUES (1)"_s, errorsInCommand, u"missing_column"_s},
        {u"SELEC 1"_s, errorsInCommand, u"SELEC"_s},
        {u"SELECT 'never closed"_s, errorsInCommand, {}},
        {u"INSERT INTO CONTRACT (nNo) VALUES (1)"_s, integrityViolation, {}},
        {u"INSERT INTO CONTRACT (nNo, nCount) VALUES (2, Null)"_s, integrityViolation, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.sql.toStdString());
        EXPECT_EQ(db.iExecSQL(c.sql), -1);
        expectLog(newErrors(), 1, c.number, c.mentioned);
        Recordset rows;
        EXPECT_EQ(db.iOpenRecSet(rows, c.sql), -1);
        EXPECT_FALSE(rows.isOpen());
        expectLog(newErrors(), 1, c.number, c.mentioned);
    }
    QString unchanged = u"text"_s;
    db.vAddAdoErrorLog(unchanged);
    EXPECT_EQ(unchanged, u"text"_s) << "the errors were cleared when they were collected";
    EXPECT_EQ(one(u"SELECT count(*) FROM CONTRACT"_s), u"1"_s);
}

TEST_P(ProviderContract, ATransactionIsKeptOrUndoneWhole) {
    cT_ADODB other;
    connect(other);
    const QString count = u"SELECT count(*) FROM CONTRACT"_s;

    EXPECT_EQ(db.iBeginTrans(), 0);
    run(u"INSERT INTO CONTRACT (nNo) VALUES (1)"_s);
    EXPECT_EQ(oneOf(other, count), u"0"_s) << "not kept yet";
    EXPECT_EQ(one(count), u"1"_s);
    EXPECT_EQ(db.iCommitTrans(), 0);
    EXPECT_EQ(oneOf(other, count), u"1"_s);

    EXPECT_EQ(db.iBeginTrans(), 0);
    run(u"INSERT INTO CONTRACT (nNo) VALUES (2)"_s);
    EXPECT_EQ(db.iRollback(), 0);
    EXPECT_EQ(oneOf(other, count), u"1"_s);

    {
        Transaction abandoned(db);
        ASSERT_TRUE(abandoned.begun());
        run(u"INSERT INTO CONTRACT (nNo) VALUES (3)"_s);
        EXPECT_FALSE(Transaction(db).begun()) << "one at a time";
    }
    EXPECT_EQ(oneOf(other, count), u"1"_s);
    newErrors();

    run(u"INSERT INTO CONTRACT (nNo) VALUES (4)"_s);
    EXPECT_EQ(oneOf(other, count), u"2"_s) << "without a transaction a statement takes effect at once";
    EXPECT_EQ(db.iCommitTrans(), -1);
    EXPECT_EQ(db.iRollback(), -1);
    EXPECT_TRUE(newErrors().startsWith(u'\r'));
}

TEST_P(ProviderContract, StatementsThatGoTogetherTellWhatEachChanged) {
    constexpr int many = 250;
    QStringList statements;
    for (int n = 1; n <= many; ++n)
        statements += {u"INSERT INTO CONTRACT (nNo, cText) VALUES (%1, 'a;b''c')"_s.arg(n),
                       u"UPDATE CONTRACT SET cText = 'x' WHERE nNo > %1"_s.arg(n - 3)};
    QList<qint64> changed;
    ASSERT_EQ(db.iBeginTrans(), 0);
    ASSERT_EQ(db.iExecSQLs(statements, changed), 0) << newErrors().toStdString();
    EXPECT_EQ(db.iCommitTrans(), 0);
    ASSERT_EQ(changed.size(), 2 * many);
    EXPECT_EQ(changed.first(6), (QList<qint64>{1, 1, 1, 2, 1, 3}));
    EXPECT_EQ(changed.last(2), (QList<qint64>{1, 3}));

    const QString count = u"SELECT count(*) FROM CONTRACT"_s;
    statements = {u"DELETE FROM CONTRACT WHERE nNo = 1"_s, u"DELETE FROM CONTRACT WHERE nNo = 0"_s,
                  u"INSERT INTO CONTRACT (nNo) VALUES (2)"_s, u"DELETE FROM CONTRACT"_s};
    ASSERT_EQ(db.iBeginTrans(), 0);
    EXPECT_EQ(db.iExecSQLs(statements, changed), -1) << "its key is there";
    EXPECT_EQ(db.iExecSQL(u"DELETE FROM CONTRACT"_s), -1) << "the transaction is over";
    EXPECT_EQ(db.iRollback(), 0);
    EXPECT_EQ(one(count), QString::number(many));
    newErrors();
}

TEST_P(ProviderContract, AFailureEndsTheTransaction) {
    cT_ADODB other;
    connect(other);
    const QString bad[] = {u"INSERT INTO CONTRACT (nNo) VALUES (1)"_s, u"SELECT * FROM missing_table"_s};
    for (const QString &sql : bad) {
        SCOPED_TRACE(sql.toStdString());
        run(u"DELETE FROM CONTRACT"_s);
        EXPECT_EQ(db.iBeginTrans(), 0);
        run(u"INSERT INTO CONTRACT (nNo) VALUES (1)"_s);
        EXPECT_EQ(db.iExecSQL(sql), -1);
        EXPECT_TRUE(newErrors().endsWith(u"1 provider error(s) occurred."_s));

        // Its rows and locks are gone at once: a colleague may write the same key.
        EXPECT_EQ(other.iExecSQL(u"INSERT INTO CONTRACT (nNo, cText) VALUES (1, 'colleague')"_s), 0)
            << other.sErrMsg().toStdString();

        // Nothing gets through that would take effect by itself now.
        Recordset rows;
        EXPECT_EQ(db.iExecSQL(u"INSERT INTO CONTRACT (nNo) VALUES (2)"_s), -1);
        EXPECT_FALSE(newErrors().isEmpty());
        EXPECT_EQ(db.iOpenRecSet(rows, u"SELECT nNo FROM CONTRACT"_s), -1);
        EXPECT_EQ(db.iBeginTrans(), -1);
        EXPECT_EQ(db.iCommitTrans(), -1);
        EXPECT_EQ(db.iRollback(), 0);

        EXPECT_EQ(one(u"SELECT cText FROM CONTRACT"_s), u"colleague"_s);
        run(u"INSERT INTO CONTRACT (nNo) VALUES (2)"_s);
        EXPECT_EQ(oneOf(other, u"SELECT count(*) FROM CONTRACT"_s), u"2"_s);
    }
}

TEST_P(ProviderContract, AConnectionIsClosedAndOpenedAgain) {
    EXPECT_EQ(db.sDbName(), GetParam().databaseName);
    EXPECT_EQ(db.iConnect(), 0) << "already open";
    ASSERT_EQ(db.iBeginTrans(), 0);
    run(u"INSERT INTO CONTRACT (nNo) VALUES (1)"_s);
    EXPECT_EQ(db.iDisConnect(), 0);
    EXPECT_FALSE(db.isConnected());
    EXPECT_EQ(db.sDbName(), QString());
    EXPECT_EQ(db.iDisConnect(), 0) << "already closed";

    EXPECT_EQ(db.iExecSQL(u"SELECT 1"_s), -1);
    EXPECT_TRUE(newErrors().startsWith(u'\r'));
    EXPECT_EQ(db.iConnect(), 0);
    // What belonged to the transaction must not run on its own in the new connection.
    EXPECT_EQ(db.iExecSQL(u"INSERT INTO CONTRACT (nNo) VALUES (2)"_s), -1);
    EXPECT_EQ(db.iRollback(), 0);
    EXPECT_EQ(one(u"SELECT count(*) FROM CONTRACT"_s), u"0"_s);
}

TEST_P(ProviderContract, AnUnreachableDatabaseIsReportedAsClosed) {
    cT_ADODB nowhere;
    nowhere.iInit(GetParam().unreachable);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(nowhere.iConnect(), -1);
    EXPECT_LT(clock.elapsed(), 15000);
    EXPECT_FALSE(nowhere.isConnected());
    EXPECT_TRUE(nowhere.sErrMsg().startsWith(u"\rConnection State=0\rError Number: -2147467259\r"_s))
        << nowhere.sErrMsg().toStdString();
    EXPECT_TRUE(nowhere.sErrMsg().endsWith(u" provider error(s) occurred."_s));

    nowhere.iInit(GetParam().connectionString());
    EXPECT_EQ(nowhere.iConnect(), 0) << "the same object, once there is a database";
}

TEST_P(ProviderContract, AStatementIsGivenUpAfterTheTimeOut) {
    EXPECT_EQ(db.iSetTimeout(1), 0);
    EXPECT_EQ(db.iSetTimeout(0), 0);
    EXPECT_EQ(db.iSetTimeout(-1), 0);
    QElapsedTimer clock;
    clock.start();
    Recordset rows;
    EXPECT_EQ(db.iOpenRecSet(rows, GetParam().slowSelect), -1);
    EXPECT_GT(clock.elapsed(), 900);
    EXPECT_LT(clock.elapsed(), 10000);
    const QString log = newErrors();
    EXPECT_TRUE(log.contains(u"\rError Number: %1\r"_s.arg(timedOut))) << log.toStdString();
    EXPECT_EQ(one(u"SELECT count(*) FROM CONTRACT"_s), u"0"_s) << "the connection is still of use";
}
