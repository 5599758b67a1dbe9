#include "sample/holidays.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString nameOf(const QDate &date) {
    for (const sample::Holiday &holiday : sample::nationalHolidays(date.year()))
        if (holiday.date == date)
            return holiday.name;
    return {};
}

TEST(NationalHolidays, AreThoseOfTheCalendarOf2026) {
    QStringList days;
    for (const sample::Holiday &holiday : sample::nationalHolidays(2026))
        days.append(holiday.date.toString(u"M/d"));
    EXPECT_EQ(days.join(u' '),
              u"1/1 1/12 2/11 2/23 3/20 4/29 5/3 5/4 5/5 5/6 7/20 8/11 9/21 9/22 9/23 10/12 11/3 11/23"_s);
}

TEST(NationalHolidays, FollowTheLawThroughTheYears) {
    struct Case {
        QDate date;
        QString name;
    };
    const QList<Case> cases = {
        {{2017, 1, 2}, u"振替休日"_s},
        {{2018, 12, 24}, u"振替休日"_s},
        {{2019, 2, 23}, {}}, // between two emperors nobody's birthday was kept
        {{2019, 12, 23}, {}},
        {{2019, 4, 30}, u"国民の休日"_s},
        {{2019, 5, 2}, u"国民の休日"_s},
        {{2019, 5, 6}, u"振替休日"_s},
        {{2019, 10, 22}, u"即位礼正殿の儀"_s},
        {{2020, 7, 24}, u"スポーツの日"_s},
        {{2020, 10, 12}, {}},
        {{2021, 8, 9}, u"振替休日"_s},
        {{2021, 8, 11}, {}},
        {{2023, 3, 21}, u"春分の日"_s},
        {{2024, 3, 20}, u"春分の日"_s},
        {{2024, 9, 22}, u"秋分の日"_s},
        {{2024, 9, 23}, u"振替休日"_s},
        {{2025, 5, 6}, u"振替休日"_s}, // 5/4 was a Sunday, 5/5 a holiday itself
        {{2025, 11, 24}, u"振替休日"_s},
        {{2027, 9, 22}, {}}, // 9/20 and 9/23 lie two days apart
        {{2032, 9, 21}, u"国民の休日"_s},
    };
    for (const Case &c : cases)
        EXPECT_EQ(nameOf(c.date), c.name) << c.date.toString(Qt::ISODate).toStdString();
}

} // namespace
