#pragma once

#include <QByteArray>
#include <QString>

/// Text in the character set that mail carries it in.
struct MailText {
    QByteArray charset; ///< US-ASCII, ISO-2022-JP or UTF-8
    QByteArray bytes;
};

/// US-ASCII or ISO-2022-JP where every character is in it (JIS X 0208 without vendors' rows and half-width
/// kana), else UTF-8. In ISO-2022-JP each line ends in ASCII.
MailText encodeMailText(const QString &text);

/// The text on one line: line breaks and other control characters become blanks, halves of characters
/// U+FFFD.
QString onOneLine(const QString &text);

/// A header's free text, in encoded words where it is not plain; folded, never holding a line break that is
/// no fold.
/// @param used characters of the first line that are taken already
QByteArray headerText(const QString &text, qsizetype used);

/// A person's name before an address in a header.
QByteArray headerName(const QString &name, qsizetype used);
