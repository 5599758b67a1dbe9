#include "viewer/layout/layout_reader.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<Layout> read(const QByteArray &body, Problem *problem) {
    return readLayout("<layout version=\"1\">\n" + body + "</layout>", u"試験.wfd"_s, problem);
}

TEST(LayoutReader, ResolvesBlocksWithTheirPlaceAndConditions) {
    Problem problem;
    const auto layout = read("<page><use block='b' x='10' y='5' when='a' equals='1|2'/></page>"
                             "<block name='b'><rect x='1' y='2' w='3' h='4'/>"
                             "<use block='c' y='100' when='d' not=''/></block>"
                             "<block name='c'><line x1='0' y1='0' x2='5' y2='0' when='e'/></block>",
                             &problem);
    ASSERT_TRUE(layout) << problem.sentence().toStdString();
    const auto &elements = layout->sections.at(0).elements;
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(std::get<BoxShape>(elements[0].shape).area, QRectF(11, 7, 3, 4));
    EXPECT_EQ(std::get<LineShape>(elements[1].shape).to, QPointF(15, 105));
    ASSERT_EQ(elements[1].when.size(), 3u);
    EXPECT_EQ(elements[1].when[0].values, QStringList({u"1"_s, u"2"_s}));
    EXPECT_TRUE(elements[1].when[1].inverted);
    EXPECT_EQ(layout->items(), QStringList({u"a"_s, u"d"_s, u"e"_s}));
}

TEST(LayoutReader, KeepsWrittenBreaksAndDropsThoseOfTheFile) {
    Problem problem;
    const auto layout = read("<page><text x='0' y='0' w='9' h='9'>　甲 &lt;&#10;\n    乙{ 名 }{{x}\r\n  丙 "
                             "<!-- no --><![CDATA[&]]></text></page>",
                             &problem);
    ASSERT_TRUE(layout) << problem.sentence().toStdString();
    const auto &pieces = std::get<TextBox>(layout->sections[0].elements[0].shape).pieces;
    ASSERT_EQ(pieces.size(), 3u);
    EXPECT_EQ(pieces[0].text, u"　甲 <\n乙"_s);
    EXPECT_TRUE(pieces[1].isItem);
    EXPECT_EQ(pieces[1].text, u"名"_s);
    EXPECT_EQ(pieces[2].text, u"{x}丙 &"_s);
}

struct Fault {
    const char *body;
    int line, column;
};

TEST(LayoutReader, TellsFaultsByLineAndColumn) {
    const Fault faults[] = {
        {"", 1, 1},
        {"<page>", 2, 16},
        {"<page>\n<!-- 𠮷 --> 𠮷</page>", 3, 12},
        {"<page/>\n <sheet/>", 3, 2},
        {"<page/><detail height='5'/>", 2, 0},
        {"<head height='5'/>", 1, 1},
        {"<detail height='0'/>", 2, 9},
        {"<detail/>", 2, 1},
        {"<page>x</page>", 2, 7},
        {"<page>\n  <text x='1' y='2'\n     w='nan' h='5'/></page>", 4, 6},
        {"<page><rect x='1' y='1e999' w='5' h='5'/></page>", 2, 19},
        {"<page><rect x='1' y='1' w='-5' h='5'/></page>", 2, 25},
        {"<page><rect x='1' y='1' w='5'/></page>", 2, 7},
        {"<page><rect x='1' y='1' w='5' h='5' colour='#000000'/></page>", 2, 37},
        {"<page><rect x='1' y='1' w='5' h='5' color='red'/></page>", 2, 37},
        {"<page><rect x='1' y='1' w='5' h='5' equals='1'/></page>", 2, 37},
        {"<page><text x='1' y='1' w='5' h='5' size='0'/></page>", 2, 37},
        {"<page><text x='1' y='1' w='5' h='5'>a{b</text></page>", 2, 7},
        {"<page><text x='1' y='1' w='5' h='5'>{#side}</text></page>", 2, 7},
        {"<page><text x='1' y='1' w='5' h='5'><b/></text></page>", 2, 7},
        {"<page><mark x='1' y='1' w='5' h='5' item='a'/></page>", 2, 7},
        {"<page><image x='1' y='1' w='5' h='5' file='a' item='b'/></page>", 2, 7},
        {"<page><use block='none'/></page>", 2, 7},
        {"<page><use block='a'/></page>\n<block name='a'><use block='b'/></block>\n"
         "<block name='b'><use block='a'/></block>",
         4, 17},
        {"<page/><block name='a'/><block name='a'/>", 2, 25},
        {"<!DOCTYPE x><page/>", 2, 1},
    };
    for (const Fault &fault : faults) {
        SCOPED_TRACE(fault.body);
        Problem problem;
        EXPECT_FALSE(read(fault.body, &problem));
        EXPECT_EQ(problem.file, u"試験.wfd"_s);
        EXPECT_FALSE(problem.text.isEmpty());
        EXPECT_EQ(problem.line, fault.line) << problem.text.toStdString();
        EXPECT_EQ(problem.column, fault.column) << problem.text.toStdString();
    }
}

TEST(LayoutReader, RefusesWhatWouldGrowWithoutEnd) {
    QByteArray blocks = "<page><use block='0'/></page>", deep = blocks;
    for (int i = 0; i < 40; ++i) {
        const QByteArray use = "<use block='" + QByteArray::number(i + 1) + "'/>";
        const QByteArray begin = "<block name='" + QByteArray::number(i) + "'>";
        deep += begin + use + "</block>";
        if (i < 20)
            blocks += begin + use.repeated(10) + "</block>";
    }
    for (const QByteArray &body : {blocks + "<block name='20'/>", deep + "<block name='40'/>"}) {
        Problem problem;
        EXPECT_FALSE(read(body, &problem));
        EXPECT_GT(problem.line, 0);
    }
    Problem problem;
    EXPECT_FALSE(readLayout("<layout version='1'>\xFF</layout>", {}, &problem));
    EXPECT_FALSE(readLayout(QByteArray(5 << 20, ' '), {}, &problem));
    EXPECT_FALSE(readLayout({}, {}, &problem));
    EXPECT_FALSE(readLayout("<layout version='2'><page/></layout>", {}, &problem));
    EXPECT_FALSE(readLayout("<layout version='1' paper='A9'><page/></layout>", {}, &problem));
    EXPECT_EQ(problem.column, 21);
}

} // namespace
