#include "app/base/codepage932.h"
#include "app/base/text.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Mapping {
    QString text;
    const char *hex;
};

TEST(CodePage932, MapsAsWindowsDoesBothWays) {
    const Mapping mappings[] = {
        {u"aZ~\\"_s, "615a7e5c"},
        {u"\x1A\x1C\x7F\x01\r\n"_s, "1a1c7f010d0a"},
        {u"ｱﾞ｡"_s, "b1dea1"},
        {u"表ソ能"_s, "955c835c945c"}, // trail byte 5C
        {u"髙﨑"_s, "fbfcfab1"},       // IBM extension, as Windows writes it
        {u"①㈱№℡Ⅳ"_s, "8740878a878287848757"},
        {u"ⅰ￤＇＂"_s, "fa40fa55fa56fa57"},
        {u"～－∥―￠￡￢"_s, "8160817c8161815c8191819281ca"},
        {u"∪∩∵≒∠⊥≡∫√"_s, "81be81bf81e681e081da81db81df81e781e3"},
        {u"\uE000"_s, "f040"},
    };
    for (const auto &[text, hex] : mappings) {
        const QByteArray bytes = QByteArray::fromHex(hex);
        EXPECT_EQ(encode932(text).bytes.toHex(), hex) << text.toStdString();
        EXPECT_FALSE(encode932(text).touched) << text.toStdString();
        EXPECT_EQ(decode932(bytes), text);
        EXPECT_TRUE(fits932(text)) << text.toStdString();
        EXPECT_EQ(byteLength932(text), bytes.size());
    }
}

// The page has codes twice and thrice (NEC row 13, NEC-selected and IBM extensions): they decode to one
// character, which must come back as itself.
TEST(CodePage932, EveryCharacterOfThePageSurvives) {
    int characters = 0;
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            if (!isLead932(char(lead)))
                continue;
            const char bytes[] = {char(lead), char(trail)};
            const QString text = decode932(QByteArrayView(bytes, 2));
            if (text.contains(QChar::ReplacementCharacter))
                continue;
            ++characters;
            EXPECT_EQ(decode932(encode932(text).bytes), text) << lead << " " << trail;
        }
    }
    EXPECT_EQ(characters, 7724 + 1880); // assigned codes and the ten rows for private use
}

TEST(CodePage932, ReplacesWhatThePageLacks) {
    const struct {
        QString text;
        QString written;
    } cases[] = {
        {u"10〜12時"_s, u"10～12時"_s},   {u"−5"_s, u"－5"_s},
        {u"A—B‖C"_s, u"A―B∥C"_s},         {u"¥100"_s, u"￥100"_s},
        {u"𠮷田"_s, u"〓田"_s}, // outside the basic plane: one mark, not two
        {u"葛\U000E0100西"_s, u"葛西"_s}, {u"か\u3099は\u309Aあ\u3099"_s, u"がぱあ〓"_s},
        {u"é😀ö"_s, u"〓〓〓"_s},          {u"\xD842"_s + u"x"_s, u"〓x"_s},
        {u"\u200B\u00AD"_s, u"〓〓"_s},
    };
    for (const auto &[text, written] : cases) {
        const Encoded932 encoded = encode932(text);
        EXPECT_EQ(decode932(encoded.bytes), written);
        EXPECT_TRUE(encoded.touched) << text.toStdString();
        EXPECT_FALSE(fits932(text)) << text.toStdString();
        EXPECT_EQ(byteLength932(text), encoded.bytes.size());
    }
}

TEST(CodePage932, ShowsBytesThatAreNoCharacter) {
    EXPECT_EQ(decode932("a\xFF\xFD\xA0\x80z"_ba), u"a\uFFFD\uFFFD\uFFFD\uFFFDz"_s);
    EXPECT_EQ(decode932("\x83"_ba), u"\uFFFD"_s);           // half a character at the end
    EXPECT_EQ(decode932("\x83\r\nx"_ba), u"\uFFFD\r\nx"_s); // the line end is not swallowed
    EXPECT_EQ(decode932(QByteArray("a\0b", 3)), u"a\0b"_s);
}

} // namespace
