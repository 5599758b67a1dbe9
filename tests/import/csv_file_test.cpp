#include "import/csv_file.h"

#include "app/base/codepage932.h"
#include "tests/support/test_environment.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString reasonOf(const QByteArray &bytes) {
    return CsvFile::fromBytes(bytes, u"表.csv"_s).reason();
}

QStringList rowsOf(const QByteArray &bytes) {
    const Result<CsvFile> file = CsvFile::fromBytes(bytes, u"表.csv"_s);
    EXPECT_TRUE(file) << file.reason().toStdString();
    QStringList rows;
    for (int row = 0; file && row < file->rowCount(); ++row) {
        const CsvFile::Cells cells = file->cells(row);
        rows += QString::number(file->line(row)) + u':' + cells.texts.join(u'|') +
                (cells.fault.isEmpty() ? QString() : u" ×"_s + cells.fault);
    }
    return rows;
}

} // namespace

TEST(CsvFiles, AreReadWhoeverWroteThem) {
    const QStringList table{u"1:氏名|電話"_s, u"2:表 能|1,2"_s, u"4:a\"b|x\ny"_s, u"6:|z"_s};
    const QString text = u"氏名,電話\r\n 表 能 ,\"1,2\"\n\r\"a\"\"b\",\"x\ny\"\r\n,=\"z\""_s;
    EXPECT_EQ(rowsOf(encode932(text).bytes), table);
    EXPECT_EQ(rowsOf(text.toUtf8()), table);
    EXPECT_EQ(rowsOf("\xEF\xBB\xBF" + text.toUtf8()), table);
    QString tabs = text;
    tabs.replace(u"氏名,電話"_s, u"氏名\t電話"_s).replace(u" 表 能 ,"_s, u"表 能\t"_s);
    tabs.replace(u"\"\",\"x"_s, u"\"\"\t\"x"_s)
        .replace(u"\"b\",\"x"_s, u"\"b\"\t\"x"_s)
        .replace(u",=\"z\""_s, u"\tz"_s);
    EXPECT_EQ(rowsOf(tabs.toUtf8()), table);
}

TEST(CsvFiles, ThatAreNoneAreRefusedWithTheLineToMend) {
    EXPECT_TRUE(reasonOf({}).contains(u"ファイルに行がありません"_s));
    EXPECT_TRUE(reasonOf("\r\n,,\r\n\"\",\" \"\r\n").contains(u"ファイルに行がありません"_s));
    EXPECT_TRUE(reasonOf("PK\x03\x04zip").contains(u"Excelのブックです"_s));
    EXPECT_TRUE(reasonOf("\xFF\xFE"
                         "a")
                    .contains(u"UTF-16"_s));
    EXPECT_TRUE(
        reasonOf("a,b\r\n1,2\r\n3,\"4\r\n5,6\r\n").contains(u"3 行目で始まる「\"」が閉じていません"_s));
    EXPECT_TRUE(reasonOf("a\n\"" + QByteArray(200'000, 'x') + "\"\n").contains(u"2 行目で始まる"_s));
    EXPECT_TRUE(reasonOf(QByteArray(5'000, ',') + "a").contains(u"列が多すぎます"_s));
    EXPECT_TRUE(reasonOf(QByteArray("a\n").repeated(CsvFile::mostRows + 1)).contains(u"分けてください"_s));
    EXPECT_EQ(rowsOf(QByteArray("x,").repeated(300) + "y").value(0).count(u'|'), 300);
}

TEST(CsvFiles, NameWhatIsWrongInARow) {
    EXPECT_EQ(rowsOf(QByteArray("a,b\n\"x\"y,2\n1\0,2\n\x81\xFF,2\n3,4", 24)),
              (QStringList{u"1:a|b"_s, u"2:\"x\"y|2 ×「\"」の後に文字があります"_s,
                           u"3:1"_s + QChar(0) + u"|2 ×NUL文字があります"_s,
                           u"4:\uFFFD\uFFFD|2 ×読めない文字があります"_s, u"5:3|4"_s}));
}

TEST(CsvFiles, OfHundredMegabytesAreReadOrRefusedAndCanBeStopped) {
    const QTemporaryDir folder;
    QFile large(folder.filePath(u"大.csv"_s));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(CsvFile::mostBytes + 1));
    EXPECT_TRUE(CsvFile::open(large.fileName()).reason().contains(u"大きすぎます（128 MB）"_s));
    large.resize(10'000'000);
    EXPECT_TRUE(CsvFile::open(large.fileName(), [](int, int) { return false; }).reason().contains(u"中止"_s));
    EXPECT_TRUE(CsvFile::open(folder.filePath(u"無.csv"_s)).reason().contains(u"無.csv"_s));
}
