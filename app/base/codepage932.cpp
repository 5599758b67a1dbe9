#include "app/base/codepage932.h"

#include <algorithm>
#include <array>
#include <unicode/ucnv.h>
#include <unicode/unorm2.h>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr quint16 geta = 0x81AC; // 〓
constexpr QChar replacement = QChar::ReplacementCharacter;

/// One direction of the page, from ICU's converter once and then looked up. A zero entry is no character (NUL
/// itself is seen to by the callers). Each is made when it is needed: the start only reads.
using ToUnicode = std::array<char16_t, 0x10000>;
using FromUnicode = std::array<quint16, 0x10000>;

icu::LocalUConverterPointer makeConverter() {
    UErrorCode status = U_ZERO_ERROR;
    icu::LocalUConverterPointer converter(ucnv_open("ibm-943_P15A-2003", &status));
    if (U_FAILURE(status))
        qFatal("ICU has no converter for code page 932: %s", u_errorName(status));
    return converter;
}

quint16 code(char lead, char trail) {
    return quint16(static_cast<unsigned char>(lead) << 8 | static_cast<unsigned char>(trail));
}

/// All codes of the page, each followed by a line feed, by which its decoded form is found.
QByteArray allCodes() {
    QByteArray bytes;
    for (int lead = 1; lead <= 0xFF; ++lead) {
        if (!isLead932(char(lead))) {
            bytes += char(lead);
            bytes += '\n';
            continue;
        }
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            if (trail == 0x7F)
                continue;
            bytes += char(lead);
            bytes += char(trail);
            bytes += '\n';
        }
    }
    return bytes;
}

ToUnicode makeToUnicode() {
    ToUnicode table{};
    const QByteArray bytes = allCodes();
    std::vector<char16_t> text(size_t(bytes.size()) + 1);
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUChars(makeConverter().getAlias(), text.data(), int32_t(text.size()), bytes.constData(),
                  int32_t(bytes.size()), &status);
    size_t at = 0;
    for (qsizetype i = 0; i < bytes.size(); ++at) {
        const bool two = isLead932(bytes[i]);
        const quint16 c = two ? code(bytes[i], bytes[i + 1]) : quint8(bytes[i]);
        // An impossible pair may decode to more than one character: none of them counts. The converter's
        // own marks for what it cannot decode are U+FFFD and, for single bytes, U+001A.
        const bool single = text[at + 1] == u'\n';
        if (single && text[at] != 0xFFFD && text[at] != 0x1A)
            table[c] = text[at];
        while (text[++at] != u'\n') {
        }
        i += two ? 3 : 2;
    }
    // The converter turns these controls round, as hosts did; Windows does not.
    for (const char16_t control : {u'\n', u'\x1A', u'\x1C', u'\x7F'})
        table[control] = control;
    return table;
}

const ToUnicode &toUnicode() {
    static const ToUnicode table = makeToUnicode();
    return table;
}

/// Several codes decode to one character; the converter knows which of them Windows writes.
FromUnicode makeFromUnicode() {
    FromUnicode table{};
    std::vector<char16_t> text;
    std::array<bool, 0x10000> seen{};
    for (const char16_t c : toUnicode()) {
        if (c >= 0x80 && !seen[c])
            text.push_back(c);
        seen[c] = true;
    }
    QByteArray bytes(qsizetype(text.size()) * 2 + 1, '\0');
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUConverterPointer converter = makeConverter();
    ucnv_setFallback(converter.getAlias(), true);
    ucnv_fromUChars(converter.getAlias(), bytes.data(), int32_t(bytes.size()), text.data(),
                    int32_t(text.size()), &status);
    qsizetype at = 0;
    for (const char16_t c : text) {
        const bool two = isLead932(bytes[at]);
        table[c] = two ? code(bytes[at], bytes[at + 1]) : quint8(bytes[at]);
        at += two ? 2 : 1;
    }
    for (quint16 c = 1; c < 0x80; ++c)
        table[c] = c;
    return table;
}

const FromUnicode &fromUnicode() {
    static const FromUnicode table = makeFromUnicode();
    return table;
}

/// The character of the page that stands nearest, 0 when there is none.
char16_t near(char16_t c) {
    switch (c) {
    case u'〜':
        return u'～';
    case u'−':
    case u'–':
        return u'－';
    case u'—':
        return u'―';
    case u'‖':
        return u'∥';
    case u'¢':
        return u'￠';
    case u'£':
        return u'￡';
    case u'¬':
        return u'￢';
    case u'¦':
        return u'￤';
    case u'¥':
        return u'￥';
    case u'‾':
        return u'￣';
    case u'\u00A0':
        return u' ';
    default:
        return 0;
    }
}

bool isVariationSelector(char32_t c) {
    return (c >= 0xFE00 && c <= 0xFE0F) || (c >= 0xE0100 && c <= 0xE01EF);
}

Step932 stepOf(quint16 c, int characters, bool touched) {
    return {c, qint8(c > 0xFF ? 2 : 1), qint8(characters), touched};
}

} // namespace

Step932 step932(QStringView text, qsizetype at) {
    const char16_t c = text[at].unicode();
    const char16_t next = at + 1 < text.size() ? text[at + 1].unicode() : u'\0';
    if (c < 0x80)
        return {c, 1, 1, false};
    const auto &codes = fromUnicode();
    if (next == voicedMark || next == halfVoicedMark)
        if (const char16_t kana = joinedKana(c, next); kana != 0 && codes[kana] != 0)
            return stepOf(codes[kana], 2, true);
    if (codes[c] != 0)
        return stepOf(codes[c], 1, false);
    if (const char16_t other = near(c); other != 0)
        return stepOf(codes[other], 1, true);
    const bool pair = QChar::isHighSurrogate(c) && QChar::isLowSurrogate(next);
    if (isVariationSelector(pair ? QChar::surrogateToUcs4(c, next) : c))
        return {0, 0, qint8(pair ? 2 : 1), true};
    return stepOf(geta, pair ? 2 : 1, true);
}

Encoded932 encode932(const QString &text) {
    Encoded932 encoded;
    encoded.bytes.resize(text.size() * 2);
    char *out = encoded.bytes.data();
    for (qsizetype i = 0; i < text.size();) {
        const Step932 step = step932(text, i);
        if (step.bytes == 2)
            *out++ = char(step.code >> 8);
        if (step.bytes != 0)
            *out++ = char(step.code & 0xFF);
        encoded.touched |= step.touched;
        i += step.characters;
    }
    encoded.bytes.truncate(out - encoded.bytes.constData());
    return encoded;
}

QString nearText932(const QString &text, const NearTexts &near) {
    QString result;
    qsizetype taken = 0;
    for (qsizetype at = 0; at < text.size();) {
        const Step932 step = step932(text, at);
        if (step.touched && step.code == geta && step.bytes > 0) {
            const QString lost = text.mid(at, step.characters);
            const QString same = lost.normalized(QString::NormalizationForm_KC);
            result += QStringView(text).sliced(taken, at - taken);
            result += near.value(lost, fits932(same) ? same : lost);
            taken = at + step.characters;
        }
        at += step.characters;
    }
    result += QStringView(text).sliced(taken);
    return result;
}

QStringList replacements932(const QString &text, const NearTexts &near) {
    QStringList told;
    for (qsizetype at = 0, before = 0; at < text.size();) {
        const Step932 step = step932(text, at);
        const bool joined = step.characters == 2 && !text[at].isHighSurrogate();
        if (step.touched && !joined) {
            // A variation selector says how the character before it is drawn.
            const qsizetype from = step.bytes == 0 ? before : at;
            const QString lost = text.mid(from, at + step.characters - from);
            const QString written = decode932(encode932(nearText932(lost, near)).bytes);
            told += u"「"_s + lost + u"」→"_s + (written.isEmpty() ? u"なし"_s : u"「"_s + written + u"」"_s);
        }
        before = at;
        at += step.characters;
    }
    told.removeDuplicates();
    return told;
}

QString decode932(QByteArrayView bytes) {
    const auto &characters = toUnicode();
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    for (qsizetype i = 0; i < bytes.size();) {
        const char byte = bytes[i];
        const qsizetype length = characterLength932(bytes, i);
        const char16_t c = characters[length == 2 ? code(byte, bytes[i + 1]) : quint8(byte)];
        *out++ = c != 0 || byte == '\0' ? QChar(c) : replacement;
        i += length;
    }
    text.truncate(out - text.constData());
    return text;
}

bool looksLikeUtf8(QByteArrayView bytes) {
    // Japanese characters take three bytes, the first of which is one of these.
    return std::any_of(bytes.begin(), bytes.end(), [](char byte) { return uchar(byte) >= 0xE0; }) &&
           bytes.isValidUtf8();
}

bool fits932(QStringView text) {
    const auto &codes = fromUnicode();
    for (const QChar c : text)
        if (c.unicode() >= 0x80 && codes[c.unicode()] == 0)
            return false;
    return true;
}

char16_t joinedKana(char16_t base, char16_t mark) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *nfc = unorm2_getNFCInstance(&status);
    const UChar32 c = U_SUCCESS(status) ? unorm2_composePair(nfc, base, mark) : U_SENTINEL;
    return c > 0 && c < 0x10000 ? char16_t(c) : char16_t(0);
}
