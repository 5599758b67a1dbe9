#include "app/base/codepage932.h"
#include "app/base/profile_text.h"
#include "tests/support/test_environment.h"

#include <QStringConverter>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray utf16(const QString &text) {
    return "\xFF\xFE"_ba + QByteArray(QStringEncoder(QStringEncoder::Utf16LE)(text));
}

/// Shows a missing value apart from an empty one.
QString shown(const std::optional<QString> &value) {
    return value ? u'<' + *value + u'>' : u"missing"_s;
}

TEST(ProfileText, ReadsByTheRules) {
    const struct {
        QString file, section, key, shown;
    } cases[] = {
        // blanks and tabs round names, values and headers; U+3000 belongs to the value
        {u"[s]\r\nk=v\r\n"_s, u"s"_s, u"k"_s, u"<v>"_s},
        {u" \t[ \vs ] x\r\n\t k \v=\t v w \t\r\n"_s, u"s"_s, u"k"_s, u"<v w>"_s},
        {u"[s]\nk=　v　\n"_s, u"s"_s, u"k"_s, u"<　v　>"_s},
        {u"[s]\nk=v\n"_s, u" s "_s, u" k "_s, u"<v>"_s},
        {u"[s]\nk=v\n"_s, u"s"_s, u"\tk"_s, u"missing"_s},
        // line ends, mixed and missing
        {u"[s]\ra=1\rb=2\n\r\nc=3\r\nd=4"_s, u"s"_s, u"b"_s, u"<2>"_s},
        {u"[s]\ra=1\rb=2\n\r\nc=3\r\nd=4"_s, u"s"_s, u"d"_s, u"<4>"_s},
        // headers
        {u"[s\nk=v"_s, u"s"_s, u"k"_s, u"<v>"_s},
        {u"[s]t]\nk=v"_s, u"s"_s, u"k"_s, u"<v>"_s},
        {u"[s;t]\nk=v"_s, u"s;t"_s, u"k"_s, u"<v>"_s},
        {u"k=v\n[s]\n"_s, u"s"_s, u"k"_s, u"missing"_s},
        {u"k=v\n"_s, u""_s, u"k"_s, u"missing"_s},
        // comments, and what is none
        {u"[s]\n ;k=v\n"_s, u"s"_s, u";k"_s, u"missing"_s},
        {u"[s]\n#k=v\n"_s, u"s"_s, u"#k"_s, u"<v>"_s},
        {u"[s]\n//k=v ; w\n"_s, u"s"_s, u"//k"_s, u"<v ; w>"_s},
        // the first "=" splits; without one there is no key
        {u"[s]\nk=a=b==\n"_s, u"s"_s, u"k"_s, u"<a=b==>"_s},
        {u"[s]\nk\nk=v\n"_s, u"s"_s, u"k"_s, u"<v>"_s},
        {u"[s]\nk=\n"_s, u"s"_s, u"k"_s, u"<>"_s},
        // the first of equal names counts
        {u"[s]\nk=1\nK=2\n[S]\nk=3\nm=4\n"_s, u"S"_s, u"K"_s, u"<1>"_s},
        {u"[s]\nk=1\n[S]\nm=4\n"_s, u"s"_s, u"m"_s, u"missing"_s},
        // only ASCII case is ignored
        {u"[s]\nｋ=1\nか=2\n"_s, u"s"_s, u"k"_s, u"missing"_s},
        {u"[s]\nｋ=1\nか=2\n"_s, u"s"_s, u"Ｋ"_s, u"missing"_s},
        {u"[s]\nｋ=1\nか=2\n"_s, u"s"_s, u"カ"_s, u"missing"_s},
        {u"[接続情報]\n接続情報=Provider=x;\n"_s, u"接続情報"_s, u"接続情報"_s, u"<Provider=x;>"_s},
        // quotes
        {u"[s]\nk=\" v \"\n"_s, u"s"_s, u"k"_s, u"< v >"_s},
        {u"[s]\nk=' v'\n"_s, u"s"_s, u"k"_s, u"< v>"_s},
        {u"[s]\nk=\"v'\n"_s, u"s"_s, u"k"_s, u"<\"v'>"_s},
        {u"[s]\nk=\"\n"_s, u"s"_s, u"k"_s, u"<\">"_s},
        {u"[s]\nk=\"\"\n"_s, u"s"_s, u"k"_s, u"<>"_s},
        {u"[s]\nk=\"a\",\"b\"\n"_s, u"s"_s, u"k"_s, u"<a\",\"b>"_s},
        {u"[s]\nk=\"\"v\"\"\n"_s, u"s"_s, u"k"_s, u"<\"v\">"_s},
        // full-width signs and trail bytes 5B, 5C and 5D are no syntax: ー is 81 5B, ソ 83 5C, ‐ 81 5D
        {u"[ー‐ー]\nソ＝；=［ー］\n"_s, u"ー‐ー"_s, u"ソ＝；"_s, u"<［ー］>"_s},
        {u"ー[x\n[s]\nーk]=表\n"_s, u"s"_s, u"ーk]"_s, u"<表>"_s},
        {u""_s, u"s"_s, u"k"_s, u"missing"_s},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(shown(profile::value(encode932(c.file).bytes, c.section, c.key)), c.shown)
            << c.file.toStdString();
        EXPECT_EQ(shown(profile::value(utf16(c.file), c.section, c.key)), c.shown) << "UTF-16";
        EXPECT_EQ(shown(profile::value("\xEF\xBB\xBF"_ba + c.file.toUtf8(), c.section, c.key)), c.shown)
            << "UTF-8";
    }
}

TEST(ProfileText, HalfACharacterSwallowsNothing) {
    EXPECT_EQ(shown(profile::value("[s]\na=\x83\nk=v\n"_ba, u"s"_s, u"k"_s)), u"<v>"_s);
    EXPECT_EQ(shown(profile::value("[s]\n\x83=v\n"_ba, u"s"_s, u"\uFFFD"_s)), u"<v>"_s);
    EXPECT_EQ(shown(profile::value(utf16(u"[s]\nk=v\n"_s).chopped(1), u"s"_s, u"k"_s)), u"<v>"_s);
    EXPECT_EQ(shown(profile::value(utf16(u"[s]\nk=v "_s).chopped(1), u"s"_s, u"k"_s)), u"<v>"_s);
    EXPECT_EQ(shown(profile::value(utf16({}), u"s"_s, u"k"_s)), u"missing"_s);
}

TEST(ProfileText, Numbers) {
    const struct {
        QString text;
        qint32 number;
    } cases[] = {
        {u"12abc"_s, 12},
        {u"-5"_s, -5},
        {u" \t7"_s, 7},
        {u"+3"_s, 3},
        {u"010"_s, 10},
        {u"abc"_s, 0},
        {u"１２"_s, 0},
        {u"--5"_s, 0},
        {u"- 5"_s, 0},
        {u"0x10"_s, 0},
        {u"1.9"_s, 1},
        {u""_s, 0},
        {u"-2147483648"_s, INT_MIN},
        {u"4294967295"_s, -1},
        {u"4294967301"_s, 5},
        {u"-"_s, 0},
    };
    for (const auto &[text, number] : cases)
        EXPECT_EQ(profile::number(text), number) << text.toStdString();
}

struct Edit {
    const char *what;
    QString before, section, key, value, after;
};

/// A null value removes the key, a null key the section.
QByteArray edited(const QByteArray &file, const Edit &edit) {
    if (edit.key.isNull())
        return profile::withoutSection(file, edit.section);
    if (edit.value.isNull())
        return profile::withoutKey(file, edit.section, edit.key);
    return profile::withValue(file, edit.section, edit.key, edit.value).bytes;
}

void expectEdits(const std::vector<Edit> &edits) {
    for (const Edit &edit : edits) {
        EXPECT_EQ(edited(encode932(edit.before).bytes, edit), encode932(edit.after).bytes) << edit.what;
        EXPECT_EQ(edited(utf16(edit.before), edit), utf16(edit.after)) << edit.what << ", UTF-16";
        EXPECT_EQ(edited("\xEF\xBB\xBF"_ba + edit.before.toUtf8(), edit),
                  "\xEF\xBB\xBF"_ba + edit.after.toUtf8())
            << edit.what << ", UTF-8";
    }
}

TEST(ProfileText, AWriteTouchesItsOwnLineOnly) {
    expectEdits({
        {"place and spelling stay, every line end stays",
         u";c\r\n\n [ S ] x\r Key \t= old ;d\n\r\n b=2\r\r\nc=3"_s, u"s"_s, u"kEY"_s, u"new"_s,
         u";c\r\n\n [ S ] x\rKey=new\r\n\r\n b=2\r\r\nc=3"_s},
        {"the last line without end", u"[s]\na=1"_s, u"s"_s, u"a"_s, u"2"_s, u"[s]\na=2\r\n"_s},
        {"the value goes as it is", u"[s]\r\na=1\r\n"_s, u" s "_s, u" a "_s, u"  \"x\" "_s,
         u"[s]\r\na=  \"x\" \r\n"_s},
        {"empty value", u"[s]\r\na=1\r\n"_s, u"s"_s, u"a"_s, u""_s, u"[s]\r\na=\r\n"_s},
        {"first of duplicates", u"[s]\na=1\na=2\n[s]\na=3\n"_s, u"s"_s, u"a"_s, u"9"_s,
         u"[s]\na=9\r\na=2\n[s]\na=3\n"_s},
        {"trail bytes", u"[ー]\nソ=表\n噂=貼\n"_s, u"ー"_s, u"ソ"_s, u"能"_s, u"[ー]\nソ=能\r\n噂=貼\n"_s},
        {"a commented key is none", u"[s]\n;a=1\n"_s, u"s"_s, u"a"_s, u"2"_s, u"[s]\na=2\r\n;a=1\n"_s},
    });
}

TEST(ProfileText, NewKeysAndSectionsFindTheirPlace) {
    expectEdits({
        {"behind the last key, before what closes the section",
         u"[s]\na=1\n;x\nb=2\n\n;end\njunk\n\n[t]\nc=3\n"_s, u"s"_s, u"n"_s, u"4"_s,
         u"[s]\na=1\n;x\nb=2\nn=4\r\n\n;end\njunk\n\n[t]\nc=3\n"_s},
        {"section without keys", u"[s] x\n;c\n[t]\n"_s, u"s"_s, u"n"_s, u"4"_s, u"[s] x\nn=4\r\n;c\n[t]\n"_s},
        {"last key without line end", u"[s]\na=1"_s, u"s"_s, u"n"_s, u"4"_s, u"[s]\na=1\r\nn=4\r\n"_s},
        {"header without line end", u"[s"_s, u"s"_s, u"n"_s, u"4"_s, u"[s\r\nn=4\r\n"_s},
        {"the first of equal sections", u"[s]\na=1\n[s]\nn=2\n"_s, u"s"_s, u"n"_s, u"4"_s,
         u"[s]\na=1\nn=4\r\n[s]\nn=2\n"_s},
        {"new section", u"[s]\na=1\n\n"_s, u"t "_s, u" n "_s, u"4"_s, u"[s]\na=1\n\n[t]\r\nn=4\r\n"_s},
        {"new section behind a line without end", u"a=1\n;x"_s, u"t"_s, u"n"_s, u"4"_s,
         u"a=1\n;x\r\n[t]\r\nn=4\r\n"_s},
        {"bare CR is a line end", u";x\r"_s, u"t"_s, u"n"_s, u"4"_s, u";x\r[t]\r\nn=4\r\n"_s},
    });
    const Edit first{"empty file", u""_s, u"接続"_s, u"表"_s, u"ソ"_s, u"[接続]\r\n表=ソ\r\n"_s};
    const QString below = u"\r\n"_s + first.after; // not on the mark's own line
    EXPECT_EQ(edited({}, first), encode932(first.after).bytes);
    EXPECT_EQ(edited("\xEF\xBB\xBF", first), "\xEF\xBB\xBF" + below.toUtf8());
    EXPECT_EQ(edited(utf16({}), first), utf16(below));
}

TEST(ProfileText, RemovesKeysAndSections) {
    expectEdits({
        {"key's first line",
         u"[s]\r\na=1\n b = 2 \r\nb=3\r\n;c\n"_s,
         u"S"_s,
         u"B"_s,
         {},
         u"[s]\r\na=1\nb=3\r\n;c\n"_s},
        {"last key leaves the section", u"[s]\na=1"_s, u"s"_s, u"a"_s, {}, u"[s]\n"_s},
        {"no such key", u"[s]\na=1"_s, u"s"_s, u"b"_s, {}, u"[s]\na=1"_s},
        {"no such section", u"[s]\na=1"_s, u"t"_s, u"a"_s, {}, u"[s]\na=1"_s},
        {"section leaves comments",
         u";0\n[s]\n;1\na=1\n\n;2\nb=2\n[t]\na=3"_s,
         u"s"_s,
         {},
         {},
         u";0\n;1\n\n;2\n[t]\na=3"_s},
        {"last section", u"[t]\na=3\n[s]\nb=1"_s, u"s"_s, {}, {}, u"[t]\na=3\n"_s},
        {"section that is not there", u"[t]\na=3"_s, u"s"_s, {}, {}, u"[t]\na=3"_s},
    });
}

TEST(ProfileText, DamagedFilesKeepTheirBytes) {
    const QByteArray binary = "\x00\xFF\xFD\x85\x5B[\x83\n=\x00x\r[s]\n\x83=\xA0"_ba;
    EXPECT_EQ(profile::withValue(binary, u"s"_s, u"n"_s, u"1"_s).bytes, binary + "\r\nn=1\r\n");
    EXPECT_EQ(profile::withoutKey(binary, u"s"_s, u"n"_s), binary);

    // Cut off inside a UTF-16 unit: the half is made whole, so that what follows stays readable.
    const QByteArray half = utf16(u"[s]\na=12"_s).chopped(1);
    const QByteArray after = profile::withValue(half, u"t"_s, u"n"_s, u"1"_s).bytes;
    EXPECT_TRUE(after.startsWith(half));
    EXPECT_EQ(shown(profile::value(after, u"t"_s, u"n"_s)), u"<1>"_s);
}

TEST(ProfileText, TellsWhenACharacterWasReplaced) {
    EXPECT_FALSE(profile::withValue({}, u"s"_s, u"k"_s, u"髙～"_s).touched);
    const profile::Edited edited = profile::withValue("[s]\r\nk=1\r\n", u"s"_s, u"k"_s, u"〜𠮷"_s);
    EXPECT_TRUE(edited.touched);
    EXPECT_EQ(edited.bytes, "[s]\r\nk="_ba + encode932(u"～〓"_s).bytes + "\r\n");
    EXPECT_FALSE(profile::withValue(utf16({}), u"s"_s, u"k"_s, u"〜𠮷"_s).touched);
}

} // namespace
