#include "app/base/text.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(Text, CutsAtNulAndTrimsBlanks) {
    EXPECT_EQ(cutAtNul(u"abc"_s), u"abc"_s);
    EXPECT_EQ(cutAtNul(u"ab\0c\0"_s), u"ab"_s);
    EXPECT_EQ(cutAtNul(u"\0abc"_s), u""_s);
    EXPECT_EQ(trimRight(u"  a b  "_s), u"  a b"_s);
    EXPECT_EQ(trimRight(u"a\u3000 \t "_s), u"a\u3000 \t"_s);
    EXPECT_EQ(trimRight(u"   "_s), u""_s);
}

TEST(Text, ConvertsWidth) {
    const struct {
        QString half;
        QString full;
    } pairs[] = {
        {u"ﾔﾏﾀﾞ ﾀﾛｳ"_s, u"ヤマダ　タロウ"_s},
        {u"ﾊﾟｰﾃｨ｡､｢｣･"_s, u"パーティ。、「」・"_s},
        {u"ABC xyz 0123"_s, u"ＡＢＣ　ｘｙｚ　０１２３"_s},
        {u"(03)1234-5678 #&@"_s, u"（０３）１２３４－５６７８　＃＆＠"_s},
        {u"ｳﾞｧ"_s, u"ヴァ"_s},
        {u"ﾞ ﾟ ｱﾞ x́ﾟ"_s, u"゛　゜　ア゛　ｘ́゜"_s},
    };
    for (const auto &[half, full] : pairs) {
        EXPECT_EQ(toFullWidth(half), full);
        EXPECT_EQ(toHalfWidth(full), half);
    }
    EXPECT_EQ(toFullWidth(u"漢字かな"_s), u"漢字かな"_s);
    EXPECT_EQ(toFullWidth(u"カﾞ"_s), u"ガ"_s);
    // The other form of these is not in code page 932.
    EXPECT_EQ(toHalfWidth(u"漢字￥￢→○│■"_s), u"漢字￥￢→○│■"_s);
    EXPECT_EQ(toFullWidth(u"¥¢"_s), u"¥¢"_s);
}

TEST(Text, SearchIgnoresCaseWidthAndKanaKind) {
    const QStringList alike[] = {
        {u"ﾔﾏﾀﾞ"_s, u"やまだ"_s, u"ヤマダ"_s, u"やまた\u3099"_s, u"ﾔﾏタ゛"_s},
        {u"ﾊﾟﾝ"_s, u"ぱん"_s, u"パン"_s, u"はﾟん"_s},
        {u"ABC-1 x"_s, u"ａｂｃ－１　Ｘ"_s, u"AbC-1 X"_s},
        {u"ゔゝゞ"_s, u"ヴヽヾ"_s},
        {u"髙橋ｱ"_s, u"高橋あ"_s},
        {u"山﨑"_s, u"山崎"_s},
        {u"𠮷野"_s, u"吉野"_s, u"吉\U000E0100野\uFE00"_s},
        {u"渡邉"_s, u"渡邊"_s, u"渡辺"_s, u"渡邉\U000E0101"_s},
        {u"福\uFA1B"_s, u"福福"_s},
        {u"ﾞ"_s, u"゛"_s},
        {u""_s, u""_s},
    };
    for (const QStringList &texts : alike)
        for (const QString &text : texts)
            EXPECT_EQ(foldForSearch(text), foldForSearch(texts.first())) << text.toStdString();

    const QStringList apart = {u"はん"_s, u"ばん"_s, u"ぱん"_s, u"ハーン"_s,
                               u"高橋"_s, u"半"_s,   u"𩸽"_s,   u"𠮟"_s};
    for (qsizetype i = 0; i < apart.size(); ++i)
        for (qsizetype j = 0; j < i; ++j)
            EXPECT_NE(foldForSearch(apart[i]), foldForSearch(apart[j]));
    // Searching is done on parts of names.
    EXPECT_TRUE(foldForSearch(u"特養　さくらホーム"_s).contains(foldForSearch(u"ｻｸﾗﾎｰ"_s)));
    const QString mixed = u"𠮷邉\U000E0101ﾊﾞ子"_s;
    EXPECT_EQ(unfoldedIndex(mixed, 1), 2);
    EXPECT_EQ(unfoldedIndex(mixed, 2), 5);
    EXPECT_EQ(unfoldedIndex(mixed, 3), 7);
}

TEST(Text, CutsAndPadsByBytes) {
    const struct {
        QString text;
        qsizetype bytes;
        QString cut, right, left;
    } cases[] = {
        {u"山田"_s, 6, u"山田"_s, u"山田  "_s, u"  山田"_s},
        {u"山田"_s, 4, u"山田"_s, u"山田"_s, u"山田"_s},
        {u"山田"_s, 3, u"山"_s, u"山 "_s, u" 山"_s},
        {u"ｱ山"_s, 2, u"ｱ"_s, u"ｱ "_s, u" ｱ"_s},
        {u"𠮷x"_s, 3, u"𠮷x"_s, u"𠮷x"_s, u"𠮷x"_s},
        {u"𠮷x"_s, 1, u""_s, u" "_s, u" "_s},
        {u"abc"_s, 0, u""_s, u""_s, u""_s},
        {u""_s, 2, u""_s, u"  "_s, u"  "_s},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(cutToBytes932(c.text, c.bytes), c.cut);
        EXPECT_EQ(padRight932(c.text, c.bytes), c.right);
        EXPECT_EQ(padLeft932(c.text, c.bytes), c.left);
    }
}

} // namespace
