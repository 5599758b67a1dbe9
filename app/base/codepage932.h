#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>

/// Text as code page 932 bytes, and what had to be replaced on the way.
struct Encoded932 {
    QByteArray bytes;
    bool touched = false; ///< some character was replaced by a near one, by 〓, or dropped
};

/// Encodes for files. A character that the page lacks becomes a near one where there is one
/// (〜 → ～, − → －, — → ―, ‖ → ∥), else 〓. Separate voiced marks are joined with their kana, variation
/// selectors are dropped.
Encoded932 encode932(const QString &text);

/// What is written instead of characters that the page lacks, by character; texts that the page has.
using NearTexts = QHash<QString, QString>;

/// The text with near ones in place of characters that would become 〓: those given, else what Unicode calls
/// the same character where the page has that (㉑ → 21).
QString nearText932(const QString &text, const NearTexts &near);

/// "「〜」→「～」" for each character that is not written as it stands, each once. Kana and a voiced mark of
/// its own read the same when they are joined: that is not told.
QStringList replacements932(const QString &text, const NearTexts &near = {});

/// Decodes bytes of a file; a byte or a pair of bytes that is no character becomes U+FFFD.
QString decode932(QByteArrayView bytes);

/// Whether bytes that should be of the page are Japanese text in UTF-8. Some of it is sound code page 932,
/// too, but text of the page is not sound UTF-8 by chance.
bool looksLikeUtf8(QByteArrayView bytes);

/// Whether every character of the text can be written in code page 932 without replacement.
bool fits932(QStringView text);

/// Whether a byte opens a two-byte character.
constexpr bool isLead932(char first) {
    const auto b = static_cast<unsigned char>(first);
    return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
}

/// Bytes of the character at a place inside the text. A lead byte takes only a possible trail byte with it,
/// so that half a character never swallows a line end or a digit.
constexpr qsizetype characterLength932(QByteArrayView bytes, qsizetype at) {
    if (!isLead932(bytes[at]) || at + 1 >= bytes.size())
        return 1;
    const auto trail = static_cast<unsigned char>(bytes[at + 1]);
    return trail >= 0x40 && trail != 0x7F && trail <= 0xFC ? 2 : 1;
}

/// One step of the encoder, for measuring and cutting: what the text's next character is written as.
struct Step932 {
    quint16 code;     ///< one byte up to 0xFF, else two; meaningless when `bytes` is 0
    qint8 bytes;      ///< 0 for a dropped character
    qint8 characters; ///< UTF-16 units taken from the text
    bool touched;
};

/// The step at a position inside the text.
Step932 step932(QStringView text, qsizetype at);

/// Combining marks that make a kana voiced (゛) or half-voiced (゜).
inline constexpr char16_t voicedMark = u'\u3099';
inline constexpr char16_t halfVoicedMark = u'\u309A';

/// The kana that a base and a combining mark make up (カ and ゛: ガ), 0 when they make none.
char16_t joinedKana(char16_t base, char16_t mark);
