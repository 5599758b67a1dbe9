#include "tests/viewer/report_fixture.h"

#include <QDate>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray text = "<text x='0' y='0' w='50' h='5'>";

QString numbers(int from, int to) {
    QString csv = u"組,番\n"_s;
    for (int i = from; i <= to; ++i)
        csv += u"%1,%2\n"_s.arg(i / 10).arg(i);
    return csv;
}

TEST(Pages, OfAFormAreRepeatedForEveryRecord) {
    Report report = reportOf("<page>" + text + "表紙</text></page><page>" + text +
                                 "{番} {#page}/{#pages} {#record}</text></page><page/>",
                             numbers(1, 3));
    EXPECT_EQ(Document({report}, {}).pageCount(), 9);
    report.repeatStart = 2;
    const Document document({report, report}, {});
    ASSERT_EQ(document.pageCount(), 14);
    EXPECT_EQ(textOf(document, 0), u"表紙"_s);
    EXPECT_EQ(textOf(document, 3), u"2 4/14 2"_s);
    EXPECT_EQ(textOf(document, 7), u"表紙"_s);
    EXPECT_EQ(textOf(document, 12), u"3 13/14 3"_s);
    EXPECT_EQ(Document({reportOf("<page/>", u"a\n"_s)}, {}).pageCount(), 0);
    EXPECT_EQ(Document({reportOf("<page/>", {})}, {}).pageCount(), 1);
    EXPECT_EQ(Document().pageCount(), 0);
}

TEST(Pages, OfAListAreFilledAndTurned) {
    // 50 mm for records: the heading takes 10, a record 10.
    const QByteArray attributes = "paper='100x100' margins='10 10 10 10'";
    const auto list = [&](const QByteArray &group) {
        return "<head height='20' first='only'>" + text + "初</text></head><head height='20' first='not'>" +
               text + "続</text></head>" + group + "<detail height='10'>" + text +
               "{番}</text></detail><foot height='10'>" + text + "{#page}</text></foot>";
    };
    const auto group = [](const QByteArray &more) {
        return "<group by='組' height='10' " + more + ">" + text + "組{組}</text></group>";
    };
    const auto pages = [&](const QByteArray &body, int from, int to) {
        const Document document({reportOf(body, numbers(from, to), attributes)}, {});
        QStringList all;
        for (int page = 0; page < document.pageCount(); ++page)
            all.append(textOf(document, page).replace(u'\n', u' '));
        return all;
    };
    EXPECT_EQ(pages(list({}), 1, 7), QStringList({u"初 1 2 3 4 5 1"_s, u"続 6 7 2"_s}));
    EXPECT_EQ(pages(list({}), 1, 5), QStringList({u"初 1 2 3 4 5 1"_s}));
    EXPECT_EQ(pages(list({}), 1, 0), QStringList({u"初 1"_s}));
    EXPECT_EQ(pages(list(group({})), 7, 11), QStringList({u"初 組0 7 8 9 1"_s, u"続 組1 10 11 2"_s}));
    EXPECT_EQ(pages(list(group({})), 5, 9), QStringList({u"初 組0 5 6 7 8 1"_s, u"続 組0 9 2"_s}));
    EXPECT_EQ(pages(list(group("repeat='no'")), 5, 9), QStringList({u"初 組0 5 6 7 8 1"_s, u"続 9 2"_s}));
    EXPECT_EQ(pages(list(group("new-page='yes'")), 9, 10), QStringList({u"初 組0 9 1"_s, u"続 組1 10 2"_s}));
    // Where its condition does not hold a group takes no room, and still begins a sheet.
    EXPECT_EQ(pages(list(group("when='組' not='0' new-page='yes'")), 5, 12),
              QStringList({u"初 5 6 7 8 9 1"_s, u"続 組1 10 11 12 2"_s}));
    // A record higher than the sheet still gets one.
    const QString tall = u"番\n1\n2\n"_s;
    Report report = reportOf("<detail height='500'>" + text + "{番}</text></detail>", tall, {});
    report.fallbackPaper = QSizeF(100, 100);
    EXPECT_EQ(Document({report}, {}).pageCount(), 2);
}

TEST(Pages, TakeTheirPaperFromTheLayoutBeforeTheOrder) {
    const auto size = [](const QByteArray &attributes) {
        Report report = reportOf("<page/>", {}, attributes);
        report.fallbackPaper = QSizeF(182, 257);
        return Document({report}, {}).pageSize(0);
    };
    EXPECT_EQ(size("paper='角2'"), QSizeF(240, 332));
    EXPECT_EQ(size("paper='A5' orientation='landscape'"), QSizeF(210, 148));
    EXPECT_EQ(size("orientation='landscape'"), QSizeF(257, 182));
    EXPECT_EQ(size("paper='99.5x1000'"), QSizeF(99.5, 1000));
}

TEST(Items, AreFoundInTheirOrder) {
    Report report = reportOf("<page>" + text +
                                 "{甲}|{乙}|{丙}|{別.甲}|{データ.甲}|{#today}|{無}</text>"
                                 "<mark x='0' y='0' w='1' h='1' item='見本' equals='1'/></page>"
                                 "<watermark text='見本' item='見本' equals='1'/>",
                             u"甲,乙\n1,2\n"_s);
    report.sources.push_back({u"別"_s, tableOf(u"甲,丙\n3,4\n5,6\n"_s)});
    report.values = {{u"乙"_s, u"固"_s}};
    const Document document({report}, {});
    EXPECT_EQ(textOf(document, 0), u"1|固|4|3|1|"_s + QDate::currentDate().toString(u"yyyy/MM/dd") + u'|');
    const QStringList warnings = document.warnings();
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings[0].contains(u"無"_s));
}

TEST(Items, DecideWhatIsShown) {
    const Document document(
        {reportOf("<page>" + text.chopped(1) + " when='a' equals='1|2'>A</text>" + text.chopped(1) +
                      " when='a' not='1'>B</text>" + text.chopped(1) +
                      " when='a'>C</text></page><watermark text='見本' item='a' equals='2'/>",
                  u"a\n1\n2\n\"\"\n"_s)},
        {});
    EXPECT_EQ(textOf(document, 0), u"A\nC"_s);
    EXPECT_EQ(textOf(document, 1), u"見本\nA\nB\nC"_s);
    EXPECT_EQ(textOf(document, 2), u"B"_s);
}

} // namespace
