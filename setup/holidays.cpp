#include "setup/holidays.h"

#include <QMap>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace setup {

namespace {

using Days = QMap<QDate, QString>;

QDate monday(int year, int month, int count) {
    const QDate first(year, month, 1);
    return first.addDays((8 - first.dayOfWeek()) % 7 + 7 * (count - 1));
}

/// The usual approximation for 1980 to 2099: the day of 1980, the drift of a year, less the leap days.
int equinoxDay(double dayOf1980, int year) {
    const int years = year - 1980;
    return static_cast<int>(std::floor(dayOf1980 + 0.242194 * years)) - years / 4;
}

void addMovingDays(Days &days, int year) {
    days[monday(year, 1, 2)] = u"成人の日"_s;
    days[QDate(year, 3, equinoxDay(20.8431, year))] = u"春分の日"_s;
    days[monday(year, 9, 3)] = u"敬老の日"_s;
    days[QDate(year, 9, equinoxDay(23.2488, year))] = u"秋分の日"_s;
    const QString sports = year < 2020 ? u"体育の日"_s : u"スポーツの日"_s;
    // Moved round the opening and closing of the games by a law of their own.
    if (year == 2020 || year == 2021) {
        const bool first = year == 2020;
        days[QDate(year, 7, first ? 23 : 22)] = u"海の日"_s;
        days[QDate(year, 7, first ? 24 : 23)] = sports;
        days[QDate(year, 8, first ? 10 : 8)] = u"山の日"_s;
    } else {
        days[monday(year, 7, 3)] = u"海の日"_s;
        days[QDate(year, 8, 11)] = u"山の日"_s;
        days[monday(year, 10, 2)] = sports;
    }
}

void addFixedDays(Days &days, int year) {
    days[QDate(year, 1, 1)] = u"元日"_s;
    days[QDate(year, 2, 11)] = u"建国記念の日"_s;
    days[QDate(year, 4, 29)] = u"昭和の日"_s;
    days[QDate(year, 5, 3)] = u"憲法記念日"_s;
    days[QDate(year, 5, 4)] = u"みどりの日"_s;
    days[QDate(year, 5, 5)] = u"こどもの日"_s;
    days[QDate(year, 11, 3)] = u"文化の日"_s;
    days[QDate(year, 11, 23)] = u"勤労感謝の日"_s;
    if (year < 2019)
        days[QDate(year, 12, 23)] = u"天皇誕生日"_s;
    if (year > 2019)
        days[QDate(year, 2, 23)] = u"天皇誕生日"_s;
    if (year == 2019) {
        days[QDate(year, 5, 1)] = u"天皇の即位の日"_s;
        days[QDate(year, 10, 22)] = u"即位礼正殿の儀"_s;
    }
}

/// A holiday on a Sunday gives its rest to the next day that is not a holiday itself.
Days substitutes(const Days &days) {
    Days added;
    for (auto it = days.begin(); it != days.end(); ++it) {
        if (it.key().dayOfWeek() != Qt::Sunday)
            continue;
        QDate day = it.key().addDays(1);
        while (days.contains(day))
            day = day.addDays(1);
        added[day] = u"振替休日"_s;
    }
    return added;
}

/// A working day between two holidays is one, too.
Days daysBetween(const Days &days) {
    Days added;
    for (auto it = days.begin(); it != days.end(); ++it) {
        const QDate day = it.key().addDays(1);
        if (!days.contains(day) && days.contains(day.addDays(1)) && day.dayOfWeek() != Qt::Sunday)
            added[day] = u"国民の休日"_s;
    }
    return added;
}

} // namespace

QList<Holiday> nationalHolidays(int year) {
    Days days;
    addFixedDays(days, year);
    addMovingDays(days, year);
    const Days between = daysBetween(days);
    days.insert(substitutes(days));
    for (auto it = between.begin(); it != between.end(); ++it)
        if (!days.contains(it.key()))
            days[it.key()] = it.value();

    QList<Holiday> holidays;
    for (auto it = days.begin(); it != days.end(); ++it)
        holidays.append({it.key(), it.value()});
    return holidays;
}

} // namespace setup
