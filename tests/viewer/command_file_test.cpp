#include "app/base/codepage932.h"
#include "viewer/command/command_file.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<Job> read(const QString &text, Problem *problem) {
    return readCommandFile(encode932(text).bytes, u"WfdCom.dat"_s, problem);
}

TEST(CommandFile, OfOneDocument) {
    Problem problem;
    const std::optional<Job> job = read(u"FileName,\"C:\\SYS\\同意書ソ表.wfd\"\r\n"
                                        "Title,\"同意書印刷\"\r\n"
                                        "SetDataText,\"同意書データ\",\"C:\\TMP\\同意書データ.csv\"\r\n"
                                        "SetDataText,\"会社\",\"会社, 本社.csv\",,,1\r\n"
                                        "PrintOffsetX, 12\r\nPrintOffsetY, -5\r\nPrintZoom, 95\r\n"
                                        "SectionRepeatStart, 3\r\nSectionRepeatStart, 3\r\nPrintPaper, A5\r\n"
                                        "SetItemValue,\"頭.会社名\",\"治療院, \"\"桜\"\"\"\r\n"
                                        "SetItemValue,\"頭.左.日付\",\"\"\r\n"
                                        "ShowWindow,2"_s,
                                        &problem);
    ASSERT_TRUE(job) << problem.sentence().toStdString();
    EXPECT_EQ(job->title, u"同意書印刷"_s);
    ASSERT_EQ(job->reports.size(), 1u);
    const ReportOrder &report = job->reports[0];
    EXPECT_EQ(report.layout, u"C:\\SYS\\同意書ソ表.wfd"_s);
    ASSERT_EQ(report.sources.size(), 2u);
    EXPECT_TRUE(report.sources[0].format.header);
    EXPECT_EQ(report.sources[1].path, u"会社, 本社.csv"_s);
    EXPECT_FALSE(report.sources[1].format.header);
    EXPECT_EQ(report.sources[1].format.separator, u',');
    EXPECT_EQ(report.sources[1].format.quote, u'"');
    ASSERT_EQ(report.values.size(), 2u);
    EXPECT_EQ(report.values[0].value, u"治療院, \"桜\""_s);
    EXPECT_EQ(job->offsetX, 12);
    EXPECT_EQ(job->offsetY, -5);
    EXPECT_EQ(job->zoom, 95);
    EXPECT_EQ(job->repeatStart, 3);
    EXPECT_EQ(job->paperSize(), QSizeF(148, 210));
    EXPECT_EQ(job->action, JobAction::Show);
    EXPECT_EQ(job->windowStyle, 2);
}

TEST(CommandFile, OfMergedReports) {
    Problem problem;
    const std::optional<Job> job = read(u"setTitle,\"まとめ\"\n"
                                        "SetDataText,\"D\",\"1.csv\",\",\", \"\"\"\", True\n"
                                        "SetDataText,\"E\",\"2.csv\",\";\", \"'\", -1\nsetreport,\"a.wfd\"\n"
                                        "AddReport\n\n"
                                        "SETTITLE,\"同意書2\"\nSetImageField,\"QRコード\"\n"
                                        "SetDataText,同意書データ,\"3.csv\"\nSetReport,\"b.wfd\"\n"_s,
                                        &problem);
    ASSERT_TRUE(job) << problem.sentence().toStdString();
    EXPECT_EQ(job->title, u"まとめ"_s);
    EXPECT_FALSE(job->action);
    ASSERT_EQ(job->reports.size(), 2u);
    const auto &sources = job->reports[0].sources;
    ASSERT_EQ(sources.size(), 2u);
    EXPECT_TRUE(sources[0].format.header);
    EXPECT_EQ(sources[0].format.quote, u'"');
    EXPECT_FALSE(sources[1].format.header);
    EXPECT_EQ(sources[1].format.separator, u';');
    EXPECT_EQ(sources[1].format.quote, u'\'');
    EXPECT_EQ(job->reports[1].title, u"同意書2"_s);
    EXPECT_EQ(job->reports[1].imageItems, QStringList{u"QRコード"_s});
    EXPECT_EQ(job->reports[1].sources.at(0).name, u"同意書データ"_s);
}

TEST(CommandFile, TellsWhatIsWrongAndWhere) {
    const struct {
        QString text, told;
    } files[] = {
        {u""_s, u"途中で切れている"_s},
        {u"Title,\"A\"\nShowWindow,2\n"_s, u"（3行）：帳票の指定"_s},
        {u"FileName,\"a.wfd\"\nSetDataText,\"D\",\"C:\\TM"_s, u"（2行 17文字目）：引用符（\"）が閉じて"_s},
        {u"FileName,\"a.wfd\"\nPrintOu"_s, u"（2行）：命令「PrintOu」"_s},
        {u"FileName,\"a.wfd\"\nSetItemValue,\"a.b\",\"x\"y\"\n"_s, u"（2行 23文字目）"_s},
        {u"FileName,a\"b.wfd\n"_s, u"（1行 11文字目）"_s},
        {u"FileName\n"_s, u"（1行）：FileName の引数"_s},
        {u"FileName,\"a.wfd\"\nPrintOffsetX, 1mm\n"_s, u"（2行 15文字目）：PrintOffsetX には"_s},
        {u"FileName,\"a.wfd\"\nPrintZoom, 99999999999\n"_s, u"（2行 12文字目）"_s},
        {u"FileName,\"a.wfd\"\nPrintPaper, Z9\n"_s, u"用紙「Z9」"_s},
        {u"SetReport,\"a.wfd\"\nSetReport,\"b.wfd\"\n"_s, u"（2行 11文字目）：レイアウトが2つ"_s},
        {u"SetReport,\"a.wfd\"\nAddReport\nSetDataText,\"D\",\"1.csv\""_s, u"最後の帳票に"_s},
        {u"SetDataText,\"D\",\"1.csv\"\nAddReport\n"_s, u"（2行）：AddReport の前"_s},
        {u"FileName,\"a.wfd\"\nShowWindow,2\nPrintOut\n"_s, u"（3行）"_s},
    };
    for (const auto &file : files) {
        Problem problem;
        EXPECT_FALSE(read(file.text, &problem)) << file.text.toStdString();
        EXPECT_TRUE(problem.sentence().startsWith(u"WfdCom.dat（"_s) &&
                    problem.sentence().contains(file.told))
            << problem.sentence().toStdString();
    }
    Problem problem;
    EXPECT_FALSE(readCommandFile(u"Title,\"a\"\nFileName,\"表.wfd\"\n"_s.toUtf8(), u"x"_s, &problem));
    EXPECT_TRUE(problem.text.contains(u"UTF-8"_s));
    EXPECT_FALSE(readCommandFile("Title,\"a\"\nFileName,\"\xFF.wfd\"\n", u"x"_s, &problem));
    EXPECT_EQ(problem.line, 2);
    EXPECT_FALSE(readCommandFile(QByteArray("F\0i\0", 4), u"x"_s, &problem));
    EXPECT_TRUE(problem.text.contains(u"コードページ932"_s));
}

} // namespace
