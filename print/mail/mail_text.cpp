#include "print/mail/mail_text.h"

#include "app/base/codepage932.h"

#include <QRegularExpression>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestWord = 75; ///< an encoded word
constexpr qsizetype longestLine = 76; ///< a line with encoded words

/// The two bytes of JIS X 0208 for a code of code page 932, 0 where it is none of that set: the page puts
/// vendors' characters into the row between the signs and the kanji and after the kanji.
quint16 jisCode(quint16 code) {
    const bool standard = (code >= 0x8140 && code <= 0x84BE) || (code >= 0x889F && code <= 0x9FFC) ||
                          (code >= 0xE040 && code <= 0xEAA4);
    if (!standard)
        return 0;
    int row = code >> 8;
    int cell = code & 0xFF;
    row = (row - (row < 0xA0 ? 0x71 : 0xB1)) * 2 + 1;
    cell -= cell > 0x7F ? 1 : 0;
    if (cell >= 0x9E)
        return quint16((row + 1) << 8 | (cell - 0x7D));
    return quint16(row << 8 | (cell - 0x1F));
}

// Code page 932 reads these six codes as other characters than the standard does.
bool readDifferently(QChar c) {
    return u"～－∥￠￡￢"_s.contains(c);
}

/// ISO-2022-JP; false when a character is outside it.
bool encode2022(const QString &text, QByteArray &bytes) {
    bool kanji = false;
    const auto shift = [&](bool toKanji) {
        if (kanji != toKanji)
            bytes += toKanji ? "\x1B$B" : "\x1B(B";
        kanji = toKanji;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].unicode() < 0x80) {
            shift(false);
            bytes += char(text[i].unicode());
            continue;
        }
        const Step932 step = step932(text, i);
        const quint16 code = step.touched || step.characters != 1 ? quint16(0) : jisCode(step.code);
        if (code == 0 || readDifferently(text[i]))
            return false;
        shift(true);
        bytes += char(code >> 8);
        bytes += char(code & 0xFF);
    }
    shift(false);
    return true;
}

QByteArray encodedWord(const QByteArray &charset, const QString &text) {
    QByteArray bytes;
    if (charset == "UTF-8")
        bytes = text.toUtf8();
    else
        encode2022(text, bytes);
    return "=?" + charset + "?B?" + bytes.toBase64() + "?=";
}

// Each word holds whole characters and is folded onto a line of its own.
QByteArray encodedWords(const QString &text, qsizetype used) {
    // An encoded word of plain ASCII is legal, but rare enough to trip readers.
    const QByteArray found = encodeMailText(text).charset;
    const QByteArray charset = found == "US-ASCII" ? QByteArray("UTF-8") : found;
    QByteArray words;
    QString word;
    qsizetype room = std::min(longestLine - used, longestWord);
    for (qsizetype i = 0; i < text.size(); ++i) {
        QString character = text.mid(i, text[i].isHighSurrogate() ? 2 : 1);
        i += character.size() - 1;
        if (!word.isEmpty() && encodedWord(charset, word + character).size() > room) {
            words += encodedWord(charset, word) + "\r\n ";
            word.clear();
            room = longestWord;
        }
        word += character;
    }
    return words + encodedWord(charset, word);
}

} // namespace

MailText encodeMailText(const QString &text) {
    QByteArray bytes;
    if (!encode2022(text, bytes))
        return {"UTF-8", text.toUtf8()};
    return {bytes.contains('\x1B') ? "ISO-2022-JP" : "US-ASCII", bytes};
}

QString onOneLine(const QString &text) {
    QString line;
    line.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            line += c;
            line += text[++i];
        } else if (c.isSurrogate()) {
            line += QChar(QChar::ReplacementCharacter);
        } else {
            const bool breaks = c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
                                c == QChar::ParagraphSeparator;
            line += breaks ? QChar(u' ') : c;
        }
    }
    return line;
}

QByteArray headerText(const QString &text, qsizetype used) {
    static const QRegularExpression plain(u"\\A[!-~]([ -~]*[!-~])?\\z"_s);
    const QString line = onOneLine(text).trimmed();
    if (line.isEmpty())
        return {};
    if (line.size() + used <= longestLine && plain.match(line).hasMatch() && !line.contains(u"=?"_s))
        return line.toLatin1();
    return encodedWords(line, used);
}

QByteArray headerName(const QString &name, qsizetype used) {
    static const QRegularExpression plain(u"\\A[A-Za-z0-9]+( [A-Za-z0-9]+)*\\z"_s);
    const QString line = onOneLine(name).trimmed();
    if (line.isEmpty())
        return {};
    return line.size() + used <= longestLine && plain.match(line).hasMatch() ? line.toLatin1()
                                                                             : encodedWords(line, used);
}
