#include "db/dialect/dialect.h"
#include "tests/db/any_database.h"
#include "tests/support/test_environment.h"

#include <QDateTime>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Statements in the server's dialect on a small table.
class Dialect : public AnyDatabase {
protected:
    Dialect() {
        run(u"CREATE TABLE T (nNo int, cName varchar(40), csKana varchar(40), iFlg smallint, nCount int,"
            u" dRate float, tDay datetime, cDay varchar(10), other varchar(10), [cOdd name] varchar(10))"_s);
        run(u"INSERT INTO T VALUES (1, '山', 'ﾔﾏ', 1, 10, 0.5, '2026/11/21', '2026/11/21', 'x', 'o1')"_s);
        run(u"INSERT INTO T VALUES (2, '川', 'ｶﾜ', 0, 20, 1.5, '2026/12/01 09:08:07.065', '2026/12/01', 'y',"
            u" 'o2')"_s);
        run(u"INSERT INTO T VALUES (3, Null, Null, Null, Null, Null, Null, '', '5', Null)"_s);
    }

    struct Case {
        QString sql;
        QString cells;
    };

    void expectAll(std::initializer_list<Case> cases) {
        for (const Case &c : cases)
            EXPECT_EQ(cells(c.sql), c.cells)
                << c.sql.toStdString() << "\n-> " << inDialect(database.db.dialect(), c.sql).toStdString();
    }
};

} // namespace

TEST_F(Dialect, WhatNeedsNoRewritingPassesUnchanged) {
    const QByteArray statements[] = {
        "",
        "  SELECT cName, nCount + 1, +5, -nCount FROM T WHERE cName LIKE '%TOP 1 + N''x''%' -- N'x' TOP 1 + "
        "'a'",
        "UPDATE T SET iFlg = iFlg + 1, tUpDateTime = GetDate() WHERE [TOP] = 1 AND \"N\" = 2",
        "INSERT INTO T (nNo, cName) VALUES (1, 'ISNULL(a,b) CONVERT(VARCHAR, x)') /* 'a' + 'b' */",
        "SELECT CAST(cIDno AS NUMERIC(10)) FROM DOCTOR ORDER BY CAST(cIDno AS NUMERIC(10))",
        "SELECT 'never closed + 1",
        "SELECT (((",
        "SELECT ))) END , + ",
        "SELECT TOP",
        "CONVERT(",
        "SELECT CASE",
        "SELECT a FROM 表 LEFT JOIN (SELECT 1 AS b) X ON a = b",
    };
    for (const QByteArray &sql : statements)
        EXPECT_EQ(inDialect(SqlDialect::Embedded, sql), sql);
}

TEST_F(Dialect, TopGivesTheFirstRowsOfItsOwnSelect) {
    expectAll({
        {u"SELECT TOP 1 nNo FROM T ORDER BY nNo DESC"_s, u"3"_s},
        {u"select top 2 T.* from T where 1 = 0"_s, u""_s},
        {u"SELECT TOP(2) nNo FROM T ORDER BY nNo -- the first"_s, u"1 2"_s},
        {u"SELECT DISTINCT TOP 1 iFlg FROM T WHERE iFlg IS NOT NULL ORDER BY iFlg;"_s, u"0"_s},
        {u"SELECT nNo FROM T WHERE nNo = (SELECT TOP 1 nNo FROM T ORDER BY nNo DESC) AND 1 = 1"_s, u"3"_s},
        {u"SELECT TOP 1 nNo FROM (SELECT TOP 2 nNo FROM T ORDER BY nNo) X ORDER BY nNo DESC"_s, u"2"_s},
        {u"SELECT (SELECT TOP 1 cName FROM T WHERE nNo = 2) + '!', nNo FROM T WHERE nNo < 3 ORDER BY nNo"_s,
         u"川! 1 川! 2"_s},
        {u"SELECT COUNT(*) FROM T WHERE EXISTS (SELECT TOP 1 * FROM T WHERE nNo = 1)"_s, u"3"_s},
        // In a compound TOP counts for one of its parts, and the order for all.
        {u"SELECT TOP 1 nNo FROM T UNION ALL SELECT nNo FROM T WHERE nNo > 1 ORDER BY nNo"_s, u"1 2 3"_s},
        {u"SELECT nNo FROM T WHERE nNo > 1 UNION ALL SELECT TOP 1 nNo FROM T ORDER BY nNo"_s, u"1 2 3"_s},
        {u"SELECT MAX(n) FROM (SELECT TOP 1 nNo AS n FROM T UNION SELECT TOP 1 nNo FROM T) X"_s, u"1"_s},
    });
    run(u"INSERT INTO T (nNo) SELECT TOP 1 nNo + 100 FROM T; INSERT INTO T (nNo) SELECT TOP 1 200 FROM T"_s);
    EXPECT_EQ(cells(u"SELECT nNo FROM T WHERE nNo > 3 ORDER BY nNo"_s), u"101 200"_s);
}

TEST_F(Dialect, PlusJoinsTextsAndAddsNumbers) {
    expectAll({
        {u"SELECT 'a' + 'b' + N'𠮷'"_s, u"ab𠮷"_s},
        {u"SELECT cName+csKana FROM T WHERE nNo = 1"_s, u"山ﾔﾏ"_s},
        {u"SELECT T.cName + '様' AS cX, T.nCount + 1 nY FROM T WHERE T.cName + '' = '山'"_s, u"山様 11"_s},
        {u"SELECT [T].[cOdd name] + other FROM T WHERE nNo = 2"_s, u"o2y"_s},
        {u"SELECT other + other + 'z' FROM T WHERE nNo = 1"_s, u"xxz"_s},
        {u"SELECT (other + '-') + (other + cName) FROM T WHERE nNo = 1"_s, u"x-x山"_s},
        {u"SELECT other + SUBSTRING(other, 1, 1) + other FROM T WHERE nNo = 2"_s, u"yyy"_s},
        {u"SELECT ISNULL(cName, '無し') + '/' + ISNULL(csKana, '') FROM T WHERE nNo = 3"_s, u"無し/"_s},
        {u"SELECT ISNULL(other, cName) + other FROM T WHERE nNo = 1"_s, u"xx"_s},
        {u"SELECT cName + Null FROM T WHERE nNo = 1"_s, u"NULL"_s},
        {u"SELECT cName + csKana FROM T WHERE nNo = 3"_s, u"NULL"_s},
        {u"SELECT CASE WHEN nCount + 5 = 15 THEN 'a' ELSE 'b' END + other FROM T WHERE nNo = 1"_s, u"ax"_s},
        {u"SELECT CAST(nNo AS VARCHAR(10)) + CAST(iFlg AS VARCHAR) FROM T WHERE nNo = 1"_s, u"11"_s},
        {u"SELECT 'a' + CONVERT(VARCHAR(10), nNo) FROM T WHERE nNo = 1"_s, u"a1"_s},
        {u"SELECT MAX(cName + '2') FROM T"_s, u"川2"_s},
        {u"SELECT LEFT(csKana + 'xyz', 3) + RIGHT('abc', 2) FROM T WHERE nNo = 1"_s, u"ﾔﾏxbc"_s},
        {u"SELECT 'a' COLLATE Japanese_CI_AS + 'b'"_s, u"ab"_s},
        {u"SELECT nNo FROM T WHERE cName + csKana LIKE '%' + 'ヤ' + '%' ORDER BY cName + csKana"_s, u"1"_s},
        // On the server, too, a number makes it an addition.
        {u"SELECT iFlg + nCount + 1, dRate * 2 + 1, LEN(cName) + 1 FROM T WHERE nNo = 1"_s, u"12 2 2"_s},
        {u"SELECT MAX(nCount) + 1, -1 + 2, (1 + 2) + 3, - +5 FROM T"_s, u"21 1 6 -5"_s},
        {u"SELECT CAST('5' AS INT) + 1, CONVERT(INT, '5') + CONVERT(NUMERIC(10), '1')"_s, u"6 6"_s},
    });
    if (database.db.dialect() == SqlDialect::Embedded) // PostgreSQL adds no text to a number
        expectAll({{u"SELECT nNo + other FROM T WHERE nNo = 3"_s, u"8"_s}});
}

TEST_F(Dialect, ConvertGivesDatesInTheirStyles) {
    expectAll({
        {u"SELECT CONVERT(VARCHAR, tDay, 111), CONVERT(VARCHAR(6), tDay, 112) FROM T WHERE nNo = 2"_s,
         u"2026/12/01 202612"_s},
        {u"SELECT CONVERT(NVARCHAR(19),T.tDay,120), convert(varchar, tDay, 121) FROM T WHERE nNo = 2"_s,
         u"2026-12-01 09:08:07 2026-12-01 09:08:07.065"_s},
        {u"SELECT CONVERT(VARCHAR, tDay, 120), CONVERT(VARCHAR, tDay, 108) FROM T WHERE nNo = 1"_s,
         u"2026-11-21 00:00:00 00:00:00"_s},
        {u"SELECT CONVERT(VARCHAR, tDay, 111), CONVERT(VARCHAR, Null, 111) FROM T WHERE nNo = 3"_s,
         u"NULL NULL"_s},
        {u"SELECT SUBSTRING(CONVERT(VARCHAR, tDay, 111),1,7) FROM T WHERE nNo = 1"_s, u"2026/11"_s},
        {u"SELECT CONVERT(DATE, tDay), CAST(tDay AS DATETIME), CAST(tDay AS DATE) FROM T WHERE nNo = 2"_s,
         u"2026/12/01 2026/12/01 09:08:07.065 2026/12/01"_s},
        // A column of texts is text already: the server ignores the style. Months depend on it.
        {u"SELECT SUBSTRING(CONVERT(VARCHAR, cDay, 112),1,4)+SUBSTRING(CONVERT(VARCHAR, cDay, 112),6,2) FROM "
         u"T"
         u" WHERE nNo < 3 ORDER BY nNo"_s,
         u"202611 202612"_s},
        {u"SELECT CONVERT(VARCHAR(2), '2026/11/21', 112)"_s, u"20"_s},
        {u"SELECT CONVERT(SMALLINT, '12') + 1, CONVERT(DECIMAL(5, 1), 2.5) * 2"_s, u"13 5"_s},
        {u"SELECT CONVERT(VARCHAR, (SELECT TOP 1 tDay FROM T ORDER BY nNo), 112)"_s, u"20261121"_s},
    });
    EXPECT_TRUE(cells(u"SELECT CONVERT(VARCHAR, tDay, 999) FROM T"_s).contains(u"style"));
}

TEST_F(Dialect, FunctionsAnswerAsTheServers) {
    expectAll({
        {u"SELECT LEN('ab  '), LEN(''), LEN('髙﨑'), LEN(Null)"_s, u"2 0 2 NULL"_s},
        {u"SELECT charindex('b', 'abcb'), CHARINDEX('B','abcb', 3), charindex('x', 'abc'), charindex(Null, 'a')"_s,
         u"2 4 0 NULL"_s},
        // Kana kind and width do not count; the position is that in the text as it is written.
        {u"SELECT charindex('だ', 'ﾔﾏﾀﾞﾀﾛｳ'), charindex('太', 'ﾔﾏﾀﾞ太郎'), charindex('タロウ', 'ﾔﾏﾀﾞﾀﾛｳ')"_s,
         u"3 5 5"_s},
        {u"SELECT charindex('か', 'がか'), charindex('', 'abc')"_s, u"2 0"_s},
        {u"SELECT replace(replace('電 話　済', ' ', ''), '　', '')"_s, u"電話済"_s},
        {u"SELECT SUBSTRING('髙橋太郎', 2, 2), LEFT('髙橋', 1), RIGHT('髙橋', 5), LEFT(Null, 1)"_s,
         u"橋太 髙 髙橋 NULL"_s},
        {u"SELECT isnull(Null, 5), ISNULL('', 'x')"_s, u"5 "_s},
    });
}

TEST_F(Dialect, AStatementHasOneTime) {
    const auto now = [] { return QDateTime::currentDateTime().toString(u"yyyy/MM/dd HH:mm:ss.zzz"_s); };
    const QString before = now();
    // 19,683 rows, which takes several milliseconds
    run(u"INSERT INTO T (nNo, cName, tDay) SELECT 9, 'new', GetDate()"
        u" FROM T A, T B, T C, T D, T E, T F, T G, T H, T I"_s);
    EXPECT_EQ(cells(u"SELECT COUNT(*), COUNT(DISTINCT tDay) FROM T WHERE cName = 'new'"_s), u"19683 1"_s);
    const QString noted = cells(u"SELECT MAX(tDay) FROM T WHERE cName = 'new'"_s);
    EXPECT_GE(noted, before);
    EXPECT_LE(noted, now());
}
