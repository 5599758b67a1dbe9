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

/// Pattern for a contains-match, '%text%': the text keeps its own % and _, its quotes are doubled.
QString sqlContains(const QString &text);
