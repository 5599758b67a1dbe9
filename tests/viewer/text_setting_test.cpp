#include "viewer/drawing/text_setting.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class TextSetting : public testing::Test {
protected:
    TextSetting() { box.area = {10, 20, 40, 30}; }

    std::vector<SheetText> set(const QString &text) {
        return setText(box, text, fonts.typeface(u"明朝"_s, false));
    }
    QStringList lines(const QString &text) {
        QStringList all;
        for (const SheetText &line : set(text))
            all.append(line.text);
        return all;
    }
    /// Signs that fill a line of the box at ten points.
    void fit(int signs) {
        box.size = 10;
        box.area.setWidth(millimetres(10) * signs + 0.01);
        box.wrap = TextBox::Wrap::Yes;
    }

    Fonts fonts;
    TextBox box;
};

TEST_F(TextSetting, KeepsThePartsOfAnAddressWhole) {
    fit(9);
    box.wrap = TextBox::Wrap::Parts;
    box.shrink = true;
    EXPECT_EQ(lines(u"若葉市1-2　緑ビル"_s), QStringList{u"若葉市1-2　緑ビル"_s});
    EXPECT_EQ(lines(u"若葉市中央1-2　中央緑ビル5階"_s),
              (QStringList{u"若葉市中央1-2"_s, u"中央緑ビル5階"_s}));
    EXPECT_EQ(lines(u"緑川県若葉市中央町大字上ノ原"_s).size(), 1) << "smaller, not broken";
}

TEST_F(TextSetting, BreaksLinesAsJapaneseIsSet) {
    struct {
        const char *text, *lines;
    } const cases[] = {
        {"あいうえおかきくけこ", "あいうえお|かきくけこ"},
        {"あいうえお。かき", "あいうえ|お。かき"},
        {"あいうえ（かき）", "あいうえ|（かき）"},
        {"あいうえお」）。か", "あいうえ|お」）。か"},
        {"あいうえおーか", "あいうえ|おーか"},
        {"あいうえキャット", "あいうえ|キャット"},
        {"abc def ghijk lm", "abc def|ghijk lm"},
        {"あいうえ12345", "あいうえ|12345"},
        {"あいうえおa", "あいうえお|a"},
        {"。。。。。。。", "。。。。。|。。"},
        {"abcdefghijklmnopqrstuvwxyz", ""}, // nowhere to break: somewhere
        {"あい\nうえ", "あい|うえ"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        fit(5);
        const QString text = QString::fromUtf8(c.text);
        const QStringList set = lines(text);
        if (*c.lines != '\0') {
            EXPECT_EQ(set.join(u'|').toStdString(), c.lines);
        }
        EXPECT_EQ(set.join(QString()).remove(u' '), QString(text).remove(u' ').remove(u'\n'));
    }
}

TEST_F(TextSetting, ShrinksUntilEverythingIsInside) {
    box.shrink = true;
    const QString name = u"長い名前の患者様"_s;
    for (const bool vertical : {false, true})
        for (const TextBox::Wrap wrap : {TextBox::Wrap::No, TextBox::Wrap::Yes, TextBox::Wrap::Parts})
            for (const int length : {1, 5, 40, 400}) {
                box.vertical = vertical;
                box.wrap = wrap;
                const QString text = name.repeated(length);
                double signs = 0;
                for (const SheetText &line : set(text)) {
                    EXPECT_TRUE(box.area.adjusted(-1e-3, -1e-3, 1e-3, 1e-3).contains(line.area))
                        << vertical << int(wrap) << length;
                    signs += double(line.text.size());
                }
                EXPECT_EQ(signs, double(text.size()));
            }
    box = {};
    box.shrink = true;
    box.wrap = TextBox::Wrap::Yes;
    EXPECT_EQ(lines(name).join(QString()), name); // a box without room is no endless loop
}

TEST_F(TextSetting, AlignsAndSpreads) {
    box.area.setWidth(60);
    const auto span = [this](const QString &text) {
        const QRectF area = set(text).at(0).area;
        return std::pair(area.left(), area.right());
    };
    const double em = millimetres(box.size);
    EXPECT_EQ(span(u"氏名"_s), std::pair(10.0, 10 + 2 * em));
    box.alignment = Qt::AlignRight | Qt::AlignTop;
    EXPECT_EQ(span(u"氏名"_s), std::pair(70 - 2 * em, 70.0));
    EXPECT_EQ(set(u"氏名"_s)[0].area.top(), 20);
    box.justify = true;
    EXPECT_EQ(span(u"氏名"_s), std::pair(10.0, 70.0));
    EXPECT_NEAR(set(u"氏名"_s)[0].runs[0].at[1].x(), 60 - em, 1e-9);
    EXPECT_NEAR(set(u"氏"_s)[0].area.center().x(), 40, 1e-9);
}

TEST_F(TextSetting, StandsUprightInColumns) {
    box.vertical = true;
    box.alignment = Qt::AlignRight | Qt::AlignTop;
    const auto columns = set(u"東ー（、\n京"_s);
    ASSERT_EQ(columns.size(), 2u);
    EXPECT_EQ(columns[0].text, u"東ー（、"_s);
    EXPECT_GT(columns[0].area.left(), columns[1].area.right());
    EXPECT_NEAR(columns[0].area.right(), box.area.right(), 1e-9);
    const auto &runs = columns[0].runs;
    ASSERT_EQ(runs.size(), 4u);
    EXPECT_EQ(runs[0].place.m12(), 0);
    EXPECT_NE(runs[1].place.m12(), 0); // the long vowel mark lies on its side
    const Typeface &typeface = fonts.typeface(u"明朝"_s, false);
    EXPECT_NE(runs[2].glyphs[0], typeface.glyph(U'（').index);
    EXPECT_NE(runs[3].glyphs[0], typeface.glyph(U'、').index);
    for (size_t i = 1; i < runs.size(); ++i)
        EXPECT_GT(runs[i].place.map(QPointF()).y(), runs[i - 1].place.map(QPointF()).y() - 1);
}

TEST_F(TextSetting, FindsEverySignInSomeFont) {
    for (const QString &sign : {u"髙"_s, u"﨑"_s, u"𠮷"_s, u"①"_s, u"A"_s, u"ｱ"_s}) {
        const auto texts = set(sign);
        EXPECT_EQ(texts.at(0).text, sign);
        EXPECT_NE(texts[0].runs.at(0).glyphs.at(0), 0u) << sign.toStdString();
    }
    EXPECT_EQ(set(u"葛\U000E0100\u202Eか\u3099"_s).at(0).text, u"葛が"_s) << "nothing unseen has a sign";
    EXPECT_FALSE(fonts.typeface(u"無い書体"_s, false).isInstalled());
}

} // namespace
