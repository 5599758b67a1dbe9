#include "db/connection_string.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Kind = ConnectionString::Kind;

TEST(ConnectionString, ValuesAreReadByTheRulesOfTheirKind) {
    const struct {
        QString text;
        QString keyword;
        QString value;
    } cases[] = {
        // Blanks, case, empty items, order.
        {u" Data Source = SRV\\INST ;; Initial Catalog=Suite;"_s, u"data source"_s, u"SRV\\INST"_s},
        {u";;\r\n Data Source=SRV\t;"_s, u"DATA SOURCE"_s, u"SRV"_s},
        {u"Provider=SQLOLEDB;Data Source="_s, u"Data Source"_s, u""_s},
        {u"Provider=SQLOLEDB;Data Source"_s + u"=a=b"_s, u"Data Source"_s, u"a=b"_s},
        {u"Provider=SQLOLEDB;a==b=c"_s, u"A=B"_s, u"c"_s},
        // Quotes.
        {u"Password=\" a;b \""_s, u"Password"_s, u" a;b "_s},
        {u"Password='it''s;';User ID=x"_s, u"Password"_s, u"it's;"_s},
        {u"Password='it''s;';User ID=x"_s, u"User ID"_s, u"x"_s},
        {u"Password=\"say \"\"x\"\"\" ; User ID=y"_s, u"Password"_s, u"say \"x\""_s},
        {u"Password={a}};'\"b} ;User ID=y"_s, u"Password"_s, u"a};'\"b"_s},
        {u"Password=''"_s, u"Password"_s, u""_s},
        {u"Password=a'b\"c{d"_s, u"Password"_s, u"a'b\"c{d"_s},
        // Repeated keywords: the last one, of Provider the first one.
        {u"Data Source=A;data source=B"_s, u"Data Source"_s, u"B"_s},
        {u"Provider=SQLOLEDB;Provider=SQLite"_s, u"Provider"_s, u"SQLOLEDB"_s},
        // ODBC: the first one, and only braces quote.
        {u"Driver={FreeTDS};Server=A;Server=B"_s, u"Server"_s, u"A"_s},
        {u"DSN=suite;PWD='x"_s, u"PWD"_s, u"'x"_s},
        {u"PWD=\"x;DSN=suite"_s, u"PWD"_s, u"\"x"_s},
        {u"Driver={My }} Driver};Server=A"_s, u"Driver"_s, u"My } Driver"_s},
        // Not there.
        {u"Data Source=A"_s, u"Password"_s, QString()},
    };
    for (const auto &c : cases) {
        const ConnectionString parsed(c.text);
        EXPECT_EQ(parsed.reason(), u""_s) << c.text.toStdString();
        EXPECT_EQ(parsed.value(c.keyword), c.value) << c.text.toStdString();
        EXPECT_EQ(parsed.value(c.keyword).isNull(), c.value.isNull()) << c.text.toStdString();
    }
}

TEST(ConnectionString, TheFirstTellingKeywordDecidesTheKind) {
    const struct {
        QString text;
        Kind kind;
    } cases[] = {
        {u"Provider=SQLite;Data Source=suite.db"_s, Kind::Embedded},
        {u"data source='a;b.db'; PROVIDER = sqlite"_s, Kind::Embedded},
        {u"Provider=SQLOLEDB.1;Data Source=SRV"_s, Kind::OleDb},
        {u"Server=SRV;Database=Suite"_s, Kind::OleDb},
        {u"Provider=SQLOLEDB;Password=\"x;Driver=y\""_s, Kind::OleDb},
        {u"driver={FreeTDS};Server=SRV"_s, Kind::Odbc},
        {u"Server=SRV;DSN=suite"_s, Kind::Odbc},
        {u"FileDSN=suite.dsn"_s, Kind::Odbc},
    };
    for (const auto &c : cases)
        EXPECT_EQ(ConnectionString(c.text).kind(), c.kind) << c.text.toStdString();
}

TEST(ConnectionString, AMalformedStringSaysWhereAndTellsNoSecret) {
    const struct {
        QString text;
        QString part; ///< of the reason
    } cases[] = {
        {u""_s, u"空です"_s},
        {u" ; ;\n"_s, u"空です"_s},
        {u"Data Source=A;secret"_s, u"15文字目からの項目を読めません。「=」がありません"_s},
        {u"Password=ab;secret;User ID=x"_s, u"13文字目"_s},
        {u"Data Source=A;=secret"_s, u"15文字目からの項目を読めません。「=」の前に項目名がありません"_s},
        {u"Password='secret"_s, u"引用符「'」が閉じられていません"_s},
        {u"Password='secret'''';x=1"_s, u"引用符「'」が閉じられていません"_s},
        {u"Password={secret"_s, u"引用符「}」が閉じられていません"_s},
        {u"Password=\"x\"secret;User ID=x"_s, u"余分な文字"_s},
        {u"Driver={FreeTDS"_s, u"引用符「}」が閉じられていません"_s},
    };
    for (const auto &c : cases) {
        const ConnectionString parsed(c.text);
        EXPECT_FALSE(parsed.isValid()) << c.text.toStdString();
        EXPECT_TRUE(parsed.reason().contains(c.part))
            << c.text.toStdString() << ": " << parsed.reason().toStdString();
        EXPECT_FALSE(parsed.reason().contains(u"secret"));
    }
}
