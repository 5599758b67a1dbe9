#pragma once

#include <QDate>
#include <QString>
#include <span>

/// A text literal: quotes doubled, N'…' when code page 932 lacks one of its characters. A null QString
/// gives Null, an empty one ''.
QString sqlText(const QString &text);

/// As sqlText, but an empty text gives Null too.
QString sqlTextOrNull(const QString &text);

/// Quoted "yyyy/mm/dd", Null for an invalid date.
QString sqlDate(const QDate &date);

QString sqlNumber(qint64 number);

/// A select list. Names differ for every column, since some providers give equal ones only once.
QString sqlSelectList(std::span<const QStringView> columns);

/// A condition: the column contains the text, column LIKE '%text%'. The text keeps its own % and _, its
/// quotes are doubled; [ and \ stand for themselves on every server. The ways of writing a name's character
/// find each other: such a character of the text is searched for in its ordinary form, as sqlOrdinary gives
/// the column.
QString sqlContains(const QString &column, const QString &text);

/// The column with the characters of the text in their ordinary forms: replace(column, '﨑', '崎') for a text
/// with 崎. To be compared with withOrdinaryNames(text); databases know 崎 and 﨑 as two characters.
QString sqlOrdinary(const QString &column, const QString &text);
