#include "app/base/codepage932.h"
#include "viewer/data/data_table.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

std::shared_ptr<const DataTable> read(const QByteArray &bytes, Problem *problem,
                                      const DataFormat &format = {}) {
    return DataTable::fromBytes(bytes, u"データ.csv"_s, format, problem);
}

TEST(DataTable, ReadsWhatTheWritersWrite) {
    Problem problem;
    const auto table = read(encode932(u"\"患者名\",\"表\",\"備考\"\r\n\"髙橋　花子\",1,\"ソ,表\"\r\n\r\n"
                                      "\"山田\" , -2 ,\"a\"\"b\"\n 裸 ,,\"\"\x1A"_s)
                                .bytes,
                            &problem);
    ASSERT_TRUE(table) << problem.sentence().toStdString();
    EXPECT_EQ(table->columns(), QStringList({u"患者名"_s, u"表"_s, u"備考"_s}));
    EXPECT_EQ(table->rowCount(), 3);
    const QList<QStringList> wanted{
        {u"髙橋　花子"_s, u"1"_s, u"ソ,表"_s}, {u"山田"_s, u"-2"_s, u"a\"b"_s}, {u"裸"_s, u""_s, u""_s}};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            EXPECT_EQ(table->value(row, column), wanted[row][column]) << row << ' ' << column;
    EXPECT_EQ(table->value(3, 0), QString());
    EXPECT_EQ(table->value(0, 3), QString());
    EXPECT_EQ(table->column(u"備考"), 2);
    EXPECT_EQ(table->column(u"年齢"), -1);
}

TEST(DataTable, TakesOtherSignsAndNoHeader) {
    Problem problem;
    // 表 ends in a backslash's byte, 芯 in the bar's.
    const auto table = read(encode932(u"'表'|芯|'x'\n'|'|2|3"_s).bytes, &problem, {u'|', u'\'', false});
    ASSERT_TRUE(table) << problem.sentence().toStdString();
    EXPECT_EQ(table->columns(), QStringList({u"項目1"_s, u"項目2"_s, u"項目3"_s}));
    EXPECT_EQ(table->value(0, 0) + table->value(0, 1) + table->value(1, 0), u"表芯|"_s);
    EXPECT_EQ(read({}, &problem, {u',', u'"', false})->rowCount(), 0);
}

struct Fault {
    const char *what;
    QByteArray bytes;
    int line, column;
};

TEST(DataTable, NamesThePlaceOfAFault) {
    const QByteArray header = "\"a\",\"b\"\r\n";
    const Fault faults[] = {
        {"empty file", "", 0, 0},
        {"too few fields", header + "1,2\r\n3\r\n", 3, 0},
        {"too many fields", header + "1,2,3\r\n", 2, 0},
        {"quote not closed", header + "1,\"" + encode932(u"表"_s).bytes + ",2\r\n3,4\r\n", 2, 3},
        {"text after a quote", header + "\r\n\"x\"y,2\r\n", 3, 1},
        {"too many columns", QByteArray(5000, ','), 1, 4097},
        {"NUL", header + QByteArray("1,\0", 3) + "\r\n", 2, 3},
        {"half a character", header + encode932(u"\"表\","_s).bytes + "\x81\r\n", 2, 5},
        {"UTF-8 with its mark", "\xEF\xBB\xBF" + header, 1, 0},
        {"UTF-8", u"\"名前\",\"b\"\r\n\"花子の家\",1\r\n"_s.toUtf8(), 1, 0},
        {"UTF-16", QByteArray("\xFF\xFE\"\0", 4), 1, 1},
    };
    for (const Fault &fault : faults) {
        SCOPED_TRACE(fault.what);
        Problem problem;
        EXPECT_FALSE(read(fault.bytes, &problem));
        EXPECT_EQ(problem.file, u"データ.csv"_s);
        EXPECT_FALSE(problem.text.isEmpty());
        EXPECT_EQ(problem.line, fault.line);
        EXPECT_EQ(problem.column, fault.column);
    }
    Problem problem;
    EXPECT_FALSE(DataTable::open(u"/nowhere/x.csv"_s, {}, &problem));
    EXPECT_FALSE(problem.text.isEmpty());
}

} // namespace
