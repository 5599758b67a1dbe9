#pragma once

#include <QDate>
#include <QList>
#include <QString>

/// A date written in full: 2026/11/21, 2026-11-21, 20261121, R8.11.21, R081121, 令和8年11月21日, 令8.11.21,
/// full-width digits allowed, also what the patterns of formatDate write. Invalid when it is no date, and
/// when the day lies outside the era named.
QDate dateFromInput(const QString &text);

/// The days that typed text can mean, the likeliest first; none when it is no date, several where whoever
/// typed it has to say which. Besides dates in full: 21 (of this month), 1120, 11/20 and 11月20日 (the month
/// from five months back to six ahead), 8/11/20, 8.11.20 and 081120 (of the running era or the century),
/// 今日, and +6m, -1m, +2w, +14d, +14 and +1y from today. The signs that an input method makes of / . - serve
/// as well.
/// @param today invalid: only dates in full are read
QList<QDate> daysFromInput(const QString &text, const QDate &today);

/// The first days of the months that typed text can mean: a date without its day (2026/11, 202611, R8.11,
/// 8/11), 11, 今月, 来月, 先月, +2m, or any day of the month.
QList<QDate> monthsFromInput(const QString &text, const QDate &today);
