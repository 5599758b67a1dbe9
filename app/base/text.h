#pragma once

#include <QString>

/// The part before the first NUL character, or the whole text when it has none.
QString cutAtNul(const QString &text);

/// Removes blanks (U+0020 only) at the right.
QString trimRight(const QString &text);

/// Two texts with something between them; an empty one is left out with what would stand beside it.
QString joined(const QString &first, const QString &second, QStringView between = u" ");

/// Half-width to full-width and back: letters, digits, signs and kana (ﾔﾏﾀﾞ ↔ ヤマダ, voiced marks joined).
QString toFullWidth(const QString &text);
QString toHalfWidth(const QString &text);

/// A text in the form in which search compares it: case, width, kana kind (hiragana or katakana), the ways of
/// writing a name's character (崎 and 﨑) and variation selectors are ignored; voiced and unvoiced kana stay
/// apart. Equal forms match.
QString foldForSearch(const QString &text);

/// Whether it is a variation selector: it chooses its character's shape and stands for nothing of its own.
constexpr bool selectsShape(char32_t c) {
    return (c >= 0xFE00 && c <= 0xFE0F) || (c >= 0xE0100 && c <= 0xE01EF);
}

/// Where in a text the character lies whose folded form begins at `foldedAt` of the folded text.
qsizetype unfoldedIndex(const QString &text, qsizetype foldedAt);

/// Length in bytes in code page 932; a character that the page lacks counts 2, as its substitute does.
qsizetype byteLength932(const QString &text);

/// Cut to at most `bytes` bytes of code page 932, never splitting a two-byte character.
QString cutToBytes932(const QString &text, qsizetype bytes);

/// Cut or filled with blanks at the right (or the left) to exactly `bytes` bytes of code page 932.
QString padRight932(const QString &text, qsizetype bytes);
QString padLeft932(const QString &text, qsizetype bytes);
