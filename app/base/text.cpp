#include "app/base/text.h"

#include "app/base/codepage932.h"
#include "app/base/name_variants.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>

namespace {

std::unique_ptr<icu::Transliterator> makeTransliterator(const char16_t *id) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> made(
        icu::Transliterator::createInstance(id, UTRANS_FORWARD, status));
    if (U_FAILURE(status))
        qFatal("ICU cannot convert widths: %s", u_errorName(status));
    return made;
}

// Other characters with a twin (￥ →) are left alone: code page 932 has one form of them only.
const icu::Transliterator &toFull() {
    static const auto transliterator = makeTransliterator(u"[\\u0020-\\u007E｡-ﾟ] Halfwidth-Fullwidth");
    return *transliterator;
}

const icu::Transliterator &toHalf() {
    static const auto transliterator = makeTransliterator(u"[！-～\\u3000-ー] Fullwidth-Halfwidth");
    return *transliterator;
}

QString transliterated(const icu::Transliterator &transliterator, QStringView text) {
    icu::UnicodeString out(text.utf16(), int32_t(text.size()));
    transliterator.transliterate(out);
    return QString(reinterpret_cast<const QChar *>(out.getBuffer()), out.length());
}

/// ICU makes every ﾞ and ﾟ that it does not join a combining mark, which code page 932 lacks.
QString withJoinedMarks(const QString &text) {
    QString joined;
    joined.reserve(text.size());
    for (const QChar c : text) {
        const bool mark = c == voicedMark || c == halfVoicedMark;
        const char16_t kana =
            mark && !joined.isEmpty() ? joinedKana(joined.back().unicode(), c.unicode()) : char16_t(0);
        if (kana != 0)
            joined.back() = QChar(kana);
        else
            joined += !mark ? c : QChar(c == voicedMark ? u'゛' : u'゜');
    }
    return joined;
}

using FoldTable = std::array<char16_t, 0x10000>;

/// In the fold table: a selector of shapes, or the first unit of a pair of which some fold to one character.
constexpr char16_t lookCloser = 0xFFFF;

char32_t characterAt(QStringView text, qsizetype at) {
    const bool pair = at + 1 < text.size() && text[at].isHighSurrogate() && text[at + 1].isLowSurrogate();
    return pair ? QChar::surrogateToUcs4(text[at], text[at + 1]) : char32_t(text[at].unicode());
}

/// The ordinary form of a full-width or half-width character, 0 when there is none. Asked of the normaliser:
/// to build a transliterator takes milliseconds of the first search.
char16_t twinOf(char16_t c) {
    UErrorCode status = U_ZERO_ERROR;
    std::array<char16_t, 4> twin;
    const UNormalizer2 *nfkc = unorm2_getNFKCInstance(&status);
    const int32_t length =
        U_SUCCESS(status) ? unorm2_getDecomposition(nfkc, c, twin.data(), int32_t(twin.size()), &status) : 0;
    return U_SUCCESS(status) && length == 1 ? twin[0] : char16_t(0);
}

/// What each character is compared as. Half-width kana become full-width, hiragana katakana, full-width
/// letters and signs half-width, letters small, the ways of writing a name's character the ordinary one.
FoldTable makeFoldTable() {
    FoldTable table;
    for (int c = 0; c < int(table.size()); ++c) {
        const UChar32 folded = u_foldCase(c, U_FOLD_CASE_DEFAULT);
        table[size_t(c)] = char16_t(folded < 0x10000 ? folded : c);
    }
    constexpr int katakanaFromHiragana = u'ア' - u'あ';
    for (char16_t c = u'ぁ'; c <= u'ゖ'; ++c)
        table[c] = char16_t(c + katakanaFromHiragana);
    table[u'ゝ'] = u'ヽ';
    table[u'ゞ'] = u'ヾ';
    for (char16_t c = u'\uFF01'; c <= u'\uFF9F'; ++c)
        if (const char16_t twin = twinOf(c); twin != 0)
            table[c] = char16_t(u_foldCase(twin, U_FOLD_CASE_DEFAULT));
    table[u'\u3000'] = u' ';
    table[u'゛'] = voicedMark;
    table[u'゜'] = halfVoicedMark;
    for (const auto &[variant, ordinary] : nameVariants())
        table[variant < 0x10000 ? variant : QChar::highSurrogate(variant)] =
            variant < 0x10000 ? ordinary : lookCloser;
    for (char16_t selector = 0xFE00; selector <= 0xFE0F; ++selector)
        table[selector] = lookCloser;
    table[QChar::highSurrogate(0xE0100)] = lookCloser;
    return table;
}

const FoldTable &foldTable() {
    static const FoldTable table = makeFoldTable();
    return table;
}

/// UTF-16 units of the longest front of the text that takes at most `bytes` bytes.
struct Front {
    qsizetype characters = 0;
    qsizetype bytes = 0;
};

Front frontOf(QStringView text, qsizetype bytes) {
    Front front;
    while (front.characters < text.size()) {
        const Step932 step = step932(text, front.characters);
        if (front.bytes + step.bytes > bytes)
            break;
        front.bytes += step.bytes;
        front.characters += step.characters;
    }
    return front;
}

} // namespace

QString cutAtNul(const QString &text) {
    const qsizetype nul = text.indexOf(QChar::Null);
    return nul < 0 ? text : text.left(nul);
}

QString trimRight(const QString &text) {
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ')
        --end;
    return text.left(end);
}

QString joined(const QString &first, const QString &second, QStringView between) {
    return first.isEmpty() || second.isEmpty() ? first + second : first + between.toString() + second;
}

QString toFullWidth(const QString &text) {
    return withJoinedMarks(transliterated(toFull(), text));
}

QString toHalfWidth(const QString &text) {
    // The start-up reads dates and numbers; to build the transliterator would take a third of it.
    if (std::all_of(text.begin(), text.end(), [](QChar c) { return c < QChar(0x80); }))
        return text;
    return transliterated(toHalf(), text).replace(u'゛', u'ﾞ').replace(u'゜', u'ﾟ');
}

QString foldForSearch(const QString &text) {
    const FoldTable &table = foldTable();
    qsizetype same = 0;
    while (same < text.size() && table[text[same].unicode()] == text[same] && text[same] != voicedMark &&
           text[same] != halfVoicedMark)
        ++same;
    if (same == text.size())
        return text;

    QString folded(text.size(), Qt::Uninitialized);
    QChar *out = std::copy_n(text.constData(), same, folded.data());
    for (qsizetype i = same; i < text.size(); ++i) {
        char16_t c = table[text[i].unicode()];
        if (c == lookCloser) {
            const char32_t whole = characterAt(text, i);
            c = ordinaryOf(whole) != 0 ? ordinaryOf(whole) : text[i].unicode();
            if (whole > 0xFFFF && (c != text[i] || selectsShape(whole)))
                ++i;
            if (selectsShape(whole))
                continue;
        }
        if ((c == voicedMark || c == halfVoicedMark) && out != folded.constData())
            if (const char16_t kana = joinedKana(out[-1].unicode(), c); kana != 0) {
                out[-1] = QChar(kana);
                continue;
            }
        *out++ = QChar(c);
    }
    folded.truncate(out - folded.constData());
    return folded;
}

qsizetype unfoldedIndex(const QString &text, qsizetype foldedAt) {
    qsizetype index = foldedAt; // folding never lengthens a text
    while (index < text.size() &&
           foldForSearch(text.left(index + (characterAt(text, index) > 0xFFFF ? 2 : 1))).size() <= foldedAt)
        ++index;
    return index;
}

qsizetype byteLength932(const QString &text) {
    return frontOf(text, std::numeric_limits<qsizetype>::max()).bytes;
}

QString cutToBytes932(const QString &text, qsizetype bytes) {
    if (text.size() <= bytes / 2) // no character takes more than two
        return text;
    return text.left(frontOf(text, bytes).characters);
}

QString padRight932(const QString &text, qsizetype bytes) {
    const Front front = frontOf(text, bytes);
    return text.left(front.characters) + QString(qMax(bytes - front.bytes, qsizetype(0)), u' ');
}

QString padLeft932(const QString &text, qsizetype bytes) {
    const Front front = frontOf(text, bytes);
    return QString(qMax(bytes - front.bytes, qsizetype(0)), u' ') + text.left(front.characters);
}
