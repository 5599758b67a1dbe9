#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "export/csv_settings.h"
#include "export/grid_table.h"
#include "tests/export/csv_reader.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

GridTable tableOf(const QStringList &headings, const std::vector<QStringList> &rows) {
    GridTable table;
    for (const QString &heading : headings)
        table.columns.push_back({heading});
    table.rows = rows;
    return table;
}

QByteArray readAll(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QString decoded(const QByteArray &bytes, CsvEncoding encoding) {
    return encoding == CsvEncoding::Utf8 ? QString::fromUtf8(bytes.mid(3)) : decode932(bytes);
}

TEST(MakeCsv, IsReadBackToTheSameCellsHoweverItIsWritten) {
    const std::vector<QStringList> rows{
        {u"1"_s, u"山田, 太郎"_s, u"\"要\"注意"_s, u""_s},
        {u"2"_s, u"a\tb"_s, u"一行目\n二行目"_s, u"髙橋 ①"_s},
        {u"3"_s, u"\""_s, u",,\n\"\""_s, u" 前後 "_s},
        {u""_s, u""_s, u""_s, u""_s},
    };
    GridTable table = tableOf({u"IDNo."_s, u"氏名,カナ"_s, u"備考"_s, u"表"_s}, rows);
    for (const char16_t delimiter : {u',', u'\t'})
        for (const bool quoted : {true, false})
            for (const CsvEncoding encoding : {CsvEncoding::CodePage932, CsvEncoding::Utf8})
                for (const bool headings : {true, false}) {
                    const QByteArray bytes =
                        modMakeCsv::bytes(table, {delimiter, quoted, headings, encoding});
                    EXPECT_EQ(bytes.startsWith("\xEF\xBB\xBF"), encoding == CsvEncoding::Utf8);
                    const auto read = readCsv(decoded(bytes, encoding), delimiter);
                    ASSERT_TRUE(read) << bytes.toPercentEncoding().toStdString();
                    std::vector<QStringList> expected = rows;
                    if (headings)
                        expected.insert(expected.begin(), table.headings());
                    EXPECT_EQ(*read, expected) << bytes.toPercentEncoding().toStdString();
                }
}

TEST(MakeCsv, TakesOutWhatBreaksLinesAndQuotesWhatReadersMistake) {
    const GridTable broken = tableOf({u"住所"_s, u"a"_s}, {{u"東京都\r\n港区\r1\n2"_s, u"x\0y"_s}});
    EXPECT_EQ(decode932(modMakeCsv::bytes(broken, {u',', false, false})), u"\"東京都港区1\n2\",xy\r\n"_s);
    EXPECT_EQ(modMakeCsv::bytes(tableOf({u"a"_s}, {{u""_s}}), {u',', false, false}), "\"\"\r\n")
        << "an empty line would be no row";
    const GridTable id = tableOf({u"IDNo."_s, u"ID2"_s}, {{u"ID7"_s, u"1"_s}});
    EXPECT_EQ(modMakeCsv::bytes(id, {u',', false, true}), "\"IDNo.\",ID2\r\nID7,1\r\n");
    EXPECT_EQ(modMakeCsv::bytes(id, {u',', false, false}), "\"ID7\",1\r\n");
}

TEST(MakeCsv, NamesCharactersThatWouldBeLostAndCellsThatWouldBeComputed) {
    const GridTable table = tableOf({u"No"_s, u"備考"_s}, {{u"1"_s, u"髙橋はカ\u3099ス"_s},
                                                           {u"2"_s, u"𠮷田〜☕☕"_s},
                                                           {u"-3"_s, u"=1+1"_s},
                                                           {u"+81-3-1234"_s, u"-"_s},
                                                           {u"-1.5"_s, u"@電話"_s}});
    EXPECT_EQ(modMakeCsv::lostCharacters(table, true),
              QStringList{u"2 行目 備考「𠮷田〜☕☕」の「𠮷」→「〓」、「〜」→「～」、「☕」→「〓」"_s});
    EXPECT_EQ(
        modMakeCsv::formulas(table),
        (QStringList{u"3 行目 備考「=1+1」"_s, u"4 行目 No「+81-3-1234」"_s, u"5 行目 備考「@電話」"_s}));
    EXPECT_EQ(decode932(modMakeCsv::bytes(table, {u'\t', false, false})).section(u"\r\n"_s, 1, 1),
              u"2\t〓田～〓〓"_s);
}

TEST(MakeCsv, KeepsAnExistingFileUntilTheNewOneIsWhole) {
    const QTemporaryDir folder;
    const QString deep = u"長い フォルダ/"_s.repeated(30);
    ASSERT_TRUE(QDir(folder.path()).mkpath(deep));
    const QString path = folder.filePath(deep + u"一覧 表.csv"_s);
    ASSERT_GT(path.size(), 240);
    const GridTable table = tableOf({u"a"_s}, {{u"1"_s}});
    ASSERT_TRUE(modMakeCsv::write(path, table, {})) << "a long path with blanks";
    EXPECT_EQ(readAll(path), "\"a\"\r\n\"1\"\r\n");

    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
    const Result<> refused = modMakeCsv::write(path, tableOf({u"b"_s}, {}), {});
    EXPECT_FALSE(refused);
    EXPECT_TRUE(refused.reason().contains(u"一覧 表.csv"_s)) << refused.reason().toStdString();
    EXPECT_EQ(readAll(path), "\"a\"\r\n\"1\"\r\n");
    EXPECT_FALSE(modMakeCsv::write(folder.filePath(u"ない/x.csv"_s), table, {}));
}

TEST(DataFileIni, HoldsSixLinesAndTakesDamagedOnesForTheDefaults) {
    const QTemporaryDir program;
    const Folders folders(program.path());
    EXPECT_TRUE(readCsvSettings(folders)->format.quoted) << "without a file the defaults hold";

    CsvSettings settings{u"/data/共有 フォルダ"_s, u"一覧=1.txt"_s, CsvFileType::Text, {}, true};
    settings.format = {u'\t', false, true, CsvEncoding::Utf8};
    ASSERT_TRUE(writeCsvSettings(folders, settings));
    const QString path = program.filePath(u"DataFile.ini"_s);
    EXPECT_EQ(decode932(readAll(path)),
              u"[LAST_DIR_NAME]=/data/共有 フォルダ\r\n[LAST_FILE_NAME]=一覧=1.txt\r\n[FILE_TYPE]=1\r\n"
              "[FILE_DELIMIT]=1\r\n[FILE_ETC]=5\r\n[FILE_OPN]=1\r\n"_s);
    const Result<CsvSettings> read = readCsvSettings(folders);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->folder, settings.folder);
    EXPECT_EQ(read->fileName, settings.fileName);
    EXPECT_EQ(read->type, CsvFileType::Text);
    EXPECT_EQ(read->section(), 1);
    EXPECT_EQ(read->etc(), 5);
    EXPECT_TRUE(read->openFolder);

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("\x81[FILE_TYPE\r\n[FILE_TYPE]=9\n[FILE_DELIMIT]=x\n\n[FILE_ETC]=-1\n[FILE_OPN]=99999999999");
    file.close();
    const Result<CsvSettings> damaged = readCsvSettings(folders);
    ASSERT_TRUE(damaged);
    EXPECT_EQ(damaged->type, CsvFileType::Csv);
    EXPECT_EQ(damaged->section(), 0);
    EXPECT_EQ(damaged->etc(), CsvSettings().etc());
    EXPECT_FALSE(damaged->openFolder);

    ASSERT_TRUE(QFile::remove(path) && QDir().mkdir(path));
    EXPECT_TRUE(readCsvSettings(folders).reason().contains(u"DataFile.ini"_s));
    EXPECT_FALSE(writeCsvSettings(folders, settings));
}

} // namespace
