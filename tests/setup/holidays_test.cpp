#include "setup/holidays.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString nameOf(const QDate &date) {
    for (const setup::Holiday &holiday : setup::nationalHolidays(date.year()))
        if (holiday.date == date)
            return holiday.name;
    return {};
}

// As the government announced them, the years of enthronement and of the games included.
TEST(NationalHolidays, AreThoseOfTheCalendar) {
    const struct {
        int year;
        QString days;
    } calendars[] = {
        {2016, u"1/1 1/11 2/11 3/20 3/21 4/29 5/3 5/4 5/5 7/18 8/11 9/19 9/22 10/10 11/3 11/23 12/23"_s},
        {2017, u"1/1 1/2 1/9 2/11 3/20 4/29 5/3 5/4 5/5 7/17 8/11 9/18 9/23 10/9 11/3 11/23 12/23"_s},
        {2018,
         u"1/1 1/8 2/11 2/12 3/21 4/29 4/30 5/3 5/4 5/5 7/16 8/11 9/17 9/23 9/24 10/8 11/3 11/23 12/23 12/24"_s},
        {2019,
         u"1/1 1/14 2/11 3/21 4/29 4/30 5/1 5/2 5/3 5/4 5/5 5/6 7/15 8/11 8/12 9/16 9/23 10/14 10/22 11/3 11/4 11/23"_s},
        {2020, u"1/1 1/13 2/11 2/23 2/24 3/20 4/29 5/3 5/4 5/5 5/6 7/23 7/24 8/10 9/21 9/22 11/3 11/23"_s},
        {2021, u"1/1 1/11 2/11 2/23 3/20 4/29 5/3 5/4 5/5 7/22 7/23 8/8 8/9 9/20 9/23 11/3 11/23"_s},
        {2022, u"1/1 1/10 2/11 2/23 3/21 4/29 5/3 5/4 5/5 7/18 8/11 9/19 9/23 10/10 11/3 11/23"_s},
        {2023, u"1/1 1/2 1/9 2/11 2/23 3/21 4/29 5/3 5/4 5/5 7/17 8/11 9/18 9/23 10/9 11/3 11/23"_s},
        {2024,
         u"1/1 1/8 2/11 2/12 2/23 3/20 4/29 5/3 5/4 5/5 5/6 7/15 8/11 8/12 9/16 9/22 9/23 10/14 11/3 11/4 11/23"_s},
        {2025,
         u"1/1 1/13 2/11 2/23 2/24 3/20 4/29 5/3 5/4 5/5 5/6 7/21 8/11 9/15 9/23 10/13 11/3 11/23 11/24"_s},
        {2026, u"1/1 1/12 2/11 2/23 3/20 4/29 5/3 5/4 5/5 5/6 7/20 8/11 9/21 9/22 9/23 10/12 11/3 11/23"_s},
        {2027, u"1/1 1/11 2/11 2/23 3/21 3/22 4/29 5/3 5/4 5/5 7/19 8/11 9/20 9/23 10/11 11/3 11/23"_s},
    };
    for (const auto &[year, known] : calendars) {
        QStringList days;
        for (const setup::Holiday &holiday : setup::nationalHolidays(year))
            days.append(holiday.date.toString(u"M/d"));
        EXPECT_EQ(days.join(u' '), known) << year;
    }
}

TEST(NationalHolidays, BearTheirNames) {
    struct Case {
        QDate date;
        QString name;
    };
    const QList<Case> cases = {
        {{2018, 12, 24}, u"振替休日"_s},
        {{2019, 4, 30}, u"国民の休日"_s},
        {{2019, 10, 22}, u"即位礼正殿の儀"_s},
        {{2020, 7, 24}, u"スポーツの日"_s},
        {{2024, 9, 22}, u"秋分の日"_s},
        {{2025, 5, 6}, u"振替休日"_s}, // 5/4 was a Sunday, 5/5 a holiday itself
        {{2026, 2, 23}, u"天皇誕生日"_s},
        {{2032, 9, 21}, u"国民の休日"_s},
    };
    for (const Case &c : cases)
        EXPECT_EQ(nameOf(c.date), c.name) << c.date.toString(Qt::ISODate).toStdString();
}

} // namespace
