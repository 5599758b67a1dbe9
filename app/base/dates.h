#pragma once

#include <QDate>
#include <QString>
#include <vector>

/// Date to text by a pattern: `ggg` era name in kanji, `g` its Latin initial, `ee`/`e` year within the
/// era, `yyyy` Western year, `mm`/`m` and `dd`/`d` month and day; other characters are copied.
/// An invalid date gives an empty text. Eras come from the system's Japanese calendar; a day before 明治 has
/// an empty era and its Western year.
QString formatDate(const QDate &date, QStringView pattern);

/// "yyyy/mm/dd", empty for an invalid date.
QString dateText(const QDate &date);

/// The date at the front of "yyyy/mm/dd" or "yyyy-mm-dd" text as databases hand it over, a time behind it
/// ignored; invalid when there is none.
QDate dateFromDatabase(QStringView text);
QDate dateFromDatabase(QLatin1StringView text);

/// Key of a date: the integer yyyymmdd, 0 for an invalid date; and back, invalid for impossible keys.
int dateKey(const QDate &date);
QDate dateFromKey(int key);

/// The day of the week as one kanji (月 … 日), empty for an invalid date.
QString weekdayText(const QDate &date);

/// An era of the Japanese calendar.
struct Era {
    QDate start;   ///< its first day
    QString name;  ///< 令和
    QChar initial; ///< R
};

/// The eras that have a Latin initial, 明治 and later, newest first, as the system's calendar knows them.
const std::vector<Era> &systemEras();

/// The era that a day belongs to; null for an invalid date and for days before the first era.
const Era *eraOf(const QDate &date);
