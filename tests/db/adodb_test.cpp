#include "db/adodb.h"
#include "db/sql_text.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Answers as it is told to, and notes what it was asked.
class ScriptedProvider : public DbProvider {
public:
    struct Script {
        bool opens = true;
        bool answers = true;
        bool throws = false;
        QList<ProviderError> errors; ///< added to by each operation that fails
        QStringList asked;
    };

    explicit ScriptedProvider(Script &script) : m_script(script) {}

    bool open(const QString &connectionString) override {
        m_script.asked += u"open "_s + connectionString;
        m_open = m_script.opens;
        return m_open || fail();
    }
    void close() override { m_open = false; }
    bool isOpen() const override { return m_open; }
    QString databaseName() const override { return u"suite"_s; }
    bool query(const QString &sql, Recordset &rows) override {
        rows.open({u"a"_s}, Recordset::Encoding::Utf8);
        return answer(sql);
    }
    bool execute(const QString &sql, qint64 *) override { return answer(sql); }
    bool begin() override { return answer(u"begin"_s); }
    bool commit() override { return answer(u"commit"_s); }
    bool rollback() override { return answer(u"rollback"_s); }
    void setCommandTimeout(int seconds) override { m_script.asked += u"timeout %1"_s.arg(seconds); }

private:
    bool answer(const QString &what) {
        m_script.asked += what;
        if (m_script.throws)
            throw std::runtime_error("out of luck");
        return m_script.answers || fail();
    }
    bool fail() {
        m_errors += m_script.errors;
        return false;
    }

    Script &m_script;
    bool m_open = false;
};

class Adodb : public testing::Test {
protected:
    Adodb() : db([this](const QString &) { return std::make_unique<ScriptedProvider>(script); }) {
        db.iInit(u"there"_s);
    }

    QStringList asked() { return std::exchange(script.asked, {}); }

    ScriptedProvider::Script script;
    cT_ADODB db;
};

const ProviderError serverAway{-2147467259, u"The server\r\nis away."_s, u"[ODBC][drv]"_s, u"08001"_s, 17};
const ProviderError remark{-2147217900, u""_s, u"drv"_s, u"01000"_s, -3621};

} // namespace

TEST_F(Adodb, ConnectingSetsTheTimeOutEveryTime) {
    EXPECT_FALSE(db.isConnected());
    EXPECT_EQ(db.iConnect(), 0);
    EXPECT_EQ(asked(), (QStringList{u"open there"_s, u"timeout 180"_s}));
    EXPECT_EQ(db.iSetTimeout(0), 0);
    EXPECT_EQ(db.iSetTimeout(-5), 0);
    EXPECT_EQ(db.iSetTimeout(7), 0);
    EXPECT_EQ(db.iConnect(), 0);
    EXPECT_EQ(asked(), (QStringList{u"timeout 7"_s, u"timeout 180"_s}));
    EXPECT_EQ(db.sErrMsg(), QString());
    EXPECT_EQ(db.sDbName(), u"suite"_s);
    EXPECT_EQ(db.ihehe(), 0);
}

TEST_F(Adodb, AFailedOpenIsLoggedToTheLetter) {
    script.opens = false;
    script.errors = {serverAway, remark};
    EXPECT_EQ(db.iConnect(), -1);
    const QString log = u"\rConnection State=0"
                        "\rError Number: -2147467259\r  Description: The server\r\nis away."
                        "\r  Source: [ODBC][drv]\r  SQL State: 08001\r  Native Error: 17"
                        "\rError Number: -2147217900\r  Description: "
                        "\r  Source: drv\r  SQL State: 01000\r  Native Error: -3621"
                        "\r\r2 provider error(s) occurred."_s;
    EXPECT_EQ(db.sErrMsg(), log);
    EXPECT_EQ(db.iConnect(), -1);
    EXPECT_EQ(db.sErrMsg(), log + log) << "it only grows";
    QString text = u"unchanged"_s;
    db.vAddAdoErrorLog(text);
    EXPECT_EQ(text, u"unchanged"_s) << "collected errors are gone";
    EXPECT_FALSE(asked().contains(u"timeout 180"_s));
}

TEST_F(Adodb, NotOpenWithoutAReasonCountsAsOpen) {
    script.opens = false;
    EXPECT_EQ(db.iConnect(), 0);
    EXPECT_EQ(asked(), (QStringList{u"open there"_s, u"timeout 180"_s}));
    EXPECT_EQ(db.sErrMsg(), QString());
}

TEST_F(Adodb, AfterAFailureNothingIsSentUntilRollback) {
    EXPECT_EQ(db.iConnect(), 0);
    Recordset rows;
    for (const bool byQuery : {false, true}) {
        EXPECT_EQ(db.iBeginTrans(), 0);
        asked();
        script.answers = false;
        EXPECT_EQ(byQuery ? db.iOpenRecSet(rows, u"S"_s) : db.iExecSQL(u"S"_s), -1);
        EXPECT_FALSE(rows.isOpen());
        script.answers = true;
        EXPECT_EQ(db.iExecSQL(u"T"_s), -1);
        EXPECT_EQ(db.iOpenRecSet(rows, u"T"_s), -1);
        EXPECT_EQ(db.iCommitTrans(), -1);
        EXPECT_EQ(db.iRollback(), 0);
        EXPECT_EQ(asked(), QStringList{u"S"_s});
    }
    EXPECT_EQ(db.iBeginTrans(), 0);
    script.answers = false;
    EXPECT_EQ(db.iCommitTrans(), -1);
    script.answers = true;
    asked();
    EXPECT_EQ(db.iExecSQL(u"T"_s), -1) << "after a failed commit as well";
    EXPECT_EQ(asked(), QStringList());
    EXPECT_EQ(db.iRollback(), 0);
    EXPECT_EQ(db.iExecSQL(u"T"_s), 0);
}

TEST_F(Adodb, ReadingConnectsAnewExceptIntoALostTransaction) {
    EXPECT_TRUE(readRows(db, u"S"_s));
    EXPECT_EQ(db.iBeginTrans(), 0);
    db.iDisConnect();
    asked();
    EXPECT_FALSE(readRows(db, u"S"_s));
    EXPECT_EQ(asked(), (QStringList{u"open there"_s, u"timeout 180"_s}));
    EXPECT_EQ(db.iRollback(), 0);
    EXPECT_TRUE(readRows(db, u"S"_s));
    script.answers = false;
    script.errors = {serverAway};
    const QString before = db.sErrMsg();
    EXPECT_EQ(before + readRows(db, u"S"_s).reason(), db.sErrMsg());
    EXPECT_NE(before, db.sErrMsg());
}

TEST_F(Adodb, ErrorsOfARollbackAreLogged) {
    EXPECT_EQ(db.iConnect(), 0);
    EXPECT_EQ(db.iBeginTrans(), 0);
    script.answers = false;
    script.errors = {serverAway};
    EXPECT_EQ(db.iRollback(), -1);
    EXPECT_TRUE(db.sErrMsg().endsWith(u"\r\r1 provider error(s) occurred."_s));
}

TEST_F(Adodb, NothingThatIsThrownEscapes) {
    EXPECT_EQ(db.iConnect(), 0);
    script.throws = true;
    Recordset rows;
    EXPECT_EQ(db.iExecSQL(u"S"_s), -1);
    EXPECT_EQ(db.iOpenRecSet(rows, u"S"_s), -1);
    EXPECT_FALSE(rows.isOpen());
    EXPECT_EQ(db.iBeginTrans(), -1);
    EXPECT_EQ(db.sErrMsg().count(u"\rout of luck"_s), 3) << db.sErrMsg().toStdString();
}

TEST_F(Adodb, TheComputerNameFitsItsColumn) {
    const QString name = db.csGetComputerName();
    EXPECT_FALSE(name.isEmpty());
    EXPECT_LE(name.size(), 15);
    EXPECT_EQ(name, name.trimmed());
    EXPECT_FALSE(name.contains(QChar::Null));
}

TEST(SqlText, ValuesBecomeLiterals) {
    const struct {
        QString made;
        QString expected;
    } cases[] = {
        {sqlText(u"it's"_s), u"'it''s'"_s},
        {sqlText(u"'"_s), u"''''"_s},
        {sqlText(u""_s), u"''"_s},
        {sqlText(QString()), u"Null"_s},
        {sqlText(u"山田 ﾔﾏﾀﾞ 髙﨑"_s), u"'山田 ﾔﾏﾀﾞ 髙﨑'"_s},
        {sqlText(u"𠮷野's"_s), u"N'𠮷野''s'"_s},
        {sqlText(u"a\0'b"_s), u"'a''b'"_s}, // a NUL would end the statement
        {sqlTextOrNull(u""_s), u"Null"_s},
        {sqlTextOrNull(u" "_s), u"' '"_s},
        {sqlContains(u"c"_s, u"100%_'"_s), u"c LIKE '%100%_''%'"_s},
        {sqlDate(QDate(2026, 1, 2)), u"'2026/01/02'"_s},
        {sqlDate(QDate()), u"Null"_s},
        {sqlNumber(-5), u"-5"_s},
        {sqlNumber(INT64_MAX), u"9223372036854775807"_s},
    };
    for (const auto &c : cases)
        EXPECT_EQ(c.made, c.expected);
}

TEST_F(Adodb, WhatADeadlockUndidIsDoneAgainAndNamedInTheEnd) {
    ASSERT_EQ(db.iConnect(), 0);
    const QString said = u"他のＰＣの処理と互いに待ち合ったため、取り消されました。何も変更していません。"
                         "少し待ってから、もう一度行ってください。"_s;
    const struct {
        ProviderError error;
        int failing, tries; ///< how many of the tries fail, how many there are
    } cases[] = {{{0, u"deadlock detected"_s, {}, u"40P01"_s, 1}, 3, 4},
                 {{0, u"was chosen as the deadlock victim"_s, {}, u"HY000"_s, 1205}, 9, 4},
                 {{0, u"could not serialize"_s, {}, u"40001"_s, 1}, 1, 2},
                 {serverAway, 1, 1}};
    for (const auto &c : cases) {
        script.errors = {c.error};
        int tries = 0;
        asked();
        const ErrorsSince errors(db);
        const short status = againAfterDeadlock(db, [&]() -> short {
            Transaction transaction(db);
            script.answers = ++tries > c.failing;
            const short done = db.iExecSQL(u"write"_s) == 0 ? transaction.commit() : short(-1);
            script.answers = true;
            return done;
        });
        EXPECT_EQ(tries, c.tries);
        EXPECT_EQ(status == 0, c.tries > c.failing);
        EXPECT_EQ(errors.text().count(said),
                  c.error.sqlState == serverAway.sqlState ? 0 : qMin(c.failing, 4));
        EXPECT_EQ(asked().count(u"begin"_s), c.tries);
    }
}
