#pragma once

#include <QDate>
#include <vector>

/// A calendar that is counted out day by day from a table of month lengths, so that the rules can be checked
/// against something that shares no date arithmetic with them.
class CountedCalendar {
public:
    struct Day {
        int year, month, day, weekday; ///< weekday 0 is Sunday
        int key() const { return year * 10000 + month * 100 + day; }
        QDate date() const { return QDate(year, month, day); }
    };

    /// From 2015/01/01, a Thursday, to the end of the given year.
    explicit CountedCalendar(int lastYear) {
        const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        int weekday = 4;
        for (int year = 2015; year <= lastYear; ++year)
            for (int month = 1; month <= 12; ++month)
                for (int day = 1; day <= lengths[month - 1] + (month == 2 && year % 4 == 0); ++day) {
                    m_days.push_back({year, month, day, weekday});
                    weekday = (weekday + 1) % 7;
                }
    }

    const Day &operator[](int i) const { return m_days[size_t(i)]; }
    int size() const { return int(m_days.size()); }

    /// The count-th month end met from a day on, that day included.
    int monthEnd(int from, int count) const {
        for (int i = from;; ++i)
            if (m_days[size_t(i) + 1].day == 1 && --count == 0)
                return i;
    }
    /// The count-th first of a month met from a day on, that day included.
    int first(int from, int count = 1) const {
        for (int i = from;; ++i)
            if (m_days[size_t(i)].day == 1 && --count == 0)
                return i;
    }

private:
    std::vector<Day> m_days;
};
