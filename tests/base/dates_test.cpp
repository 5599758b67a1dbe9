#include "app/base/dates.h"

#include "app/base/typed_dates.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(Dates, FormatsEveryPatternInUse) {
    const struct {
        const char16_t *pattern;
        QString newEra, later;
    } cases[] = {
        {u"yyyy/mm/dd", u"2019/05/01"_s, u"2026/11/21"_s},
        {u"yyyy/mm/01", u"2019/05/01"_s, u"2026/11/01"_s},
        {u"gggee年mm月dd日", u"令和01年05月01日"_s, u"令和08年11月21日"_s},
        {u"ggg ee年 mm月 dd日", u"令和 01年 05月 01日"_s, u"令和 08年 11月 21日"_s},
        {u"ggge年mm月dd日", u"令和1年05月01日"_s, u"令和8年11月21日"_s},
        {u"ggg e年m月d日", u"令和 1年5月1日"_s, u"令和 8年11月21日"_s},
        {u"gggee年mm月", u"令和01年05月"_s, u"令和08年11月"_s},
        {u"gggee年mm月01日", u"令和01年05月01日"_s, u"令和08年11月01日"_s},
        {u"ggg e年", u"令和 1年"_s, u"令和 8年"_s},
        {u"g", u"R"_s, u"R"_s},
        {u"ge.m.d", u"R1.5.1"_s, u"R8.11.21"_s},
        {u"yyyymmdd", u"20190501"_s, u"20261121"_s},
        {u"", u""_s, u""_s},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(formatDate(QDate(2019, 5, 1), c.pattern), c.newEra);
        EXPECT_EQ(formatDate(QDate(2026, 11, 21), c.pattern), c.later);
        EXPECT_EQ(formatDate(QDate(), c.pattern), u""_s);
    }
}

TEST(Dates, ChangesErasOnTheirFirstDay) {
    const struct {
        QDate date;
        QString text;
    } cases[] = {
        {{2019, 4, 30}, u"H 平成31年04月30日"_s},  {{2019, 5, 1}, u"R 令和01年05月01日"_s},
        {{1989, 1, 7}, u"S 昭和64年01月07日"_s},   {{1989, 1, 8}, u"H 平成01年01月08日"_s},
        {{1926, 12, 24}, u"T 大正15年12月24日"_s}, {{1926, 12, 25}, u"S 昭和01年12月25日"_s},
        {{1912, 7, 29}, u"M 明治45年07月29日"_s},  {{1912, 7, 30}, u"T 大正01年07月30日"_s},
        {{1868, 9, 8}, u"M 明治01年09月08日"_s},   {{1868, 9, 7}, u" 1868年09月07日"_s},
        {{2400, 2, 29}, u"R 令和382年02月29日"_s},
    };
    for (const auto &[date, text] : cases)
        EXPECT_EQ(formatDate(date, u"g gggee年mm月dd日"), text);
    EXPECT_EQ(eraOf(QDate()), nullptr);
}

TEST(Dates, ReadsWhatDatabasesHandOver) {
    const struct {
        QString text;
        QDate date;
    } cases[] = {
        {u"2026/11/21"_s, {2026, 11, 21}},
        {u"2026-11-21"_s, {2026, 11, 21}},
        {u"2026-11-21 00:00:00.000"_s, {2026, 11, 21}},
        {u"2026-11-21T13:05:00"_s, {2026, 11, 21}},
        {u"2026/1/2"_s, {2026, 1, 2}},
        {u"2024-02-29"_s, {2024, 2, 29}},
        {u"2023-02-29"_s, {}},
        {u"2026-13-01"_s, {}},
        {u"0000-00-00"_s, {}},
        {u"2026-11"_s, {}},
        {u"2026-11-"_s, {}},
        {u"20261121"_s, {}},
        {u"12345-01-01"_s, {}},
        {u"2026-11-211"_s, {}},
        {u"令和8年"_s, {}},
        {u""_s, {}},
    };
    for (const auto &[text, date] : cases) {
        EXPECT_EQ(dateFromDatabase(text), date) << text.toStdString();
        const QByteArray utf8 = text.toUtf8();
        EXPECT_EQ(dateFromDatabase(QLatin1StringView(utf8)), date) << utf8.constData();
    }
}

TEST(Dates, TakesWhatPeopleType) {
    const QDate day(2026, 11, 21);
    for (const QString &text :
         {u"2026/11/21"_s, u"2026-11-21"_s, u"2026.11.21"_s, u"20261121"_s, u"2026年11月21日"_s,
          u"R8.11.21"_s, u"r8/11/21"_s, u"R08-11-21"_s, u"R081121"_s, u"令和8年11月21日"_s,
          u"令和 08年 11月 21日"_s, u"令和8年11月21"_s, u"２０２６／１１／２１"_s, u"Ｒ８．１１．２１"_s,
          u"令和８年１１月２１日"_s, u" 2026/11/21 "_s, u"令和8/11/21"_s})
        EXPECT_EQ(dateFromInput(text), day) << text.toStdString();
    EXPECT_EQ(dateFromInput(u"令和元年5月1日"_s), QDate(2019, 5, 1));
    EXPECT_EQ(dateFromInput(u"S64.1.7"_s), QDate(1989, 1, 7));
    EXPECT_EQ(dateFromInput(u"2024/2/29"_s), QDate(2024, 2, 29));

    for (const QString &text : {u""_s,
                                u"abc"_s,
                                u"11/21"_s,
                                u"8/11/21"_s,
                                u"2026/11"_s,
                                u"2026/2/29"_s,
                                u"20261321"_s,
                                u"2026112"_s,
                                u"R8.13.1"_s,
                                u"R0.1.1"_s,
                                u"X8.11.21"_s,
                                u"R81121"_s,
                                u"慶応3年1月1日"_s,
                                u"2026/11/21x"_s,
                                u"R8..21"_s,
                                u"元/1/1"_s,
                                u"令和1年4月30日"_s,
                                u"平成31年5月1日"_s,
                                u"S64.1.8"_s,
                                u"99999999999"_s})
        EXPECT_FALSE(dateFromInput(text).isValid()) << text.toStdString();
}

TEST(Dates, TakesShortDatesAsTheDayHasIt) {
    const QDate today(2026, 11, 22);
    const struct {
        QString typed;
        QList<QDate> days;
    } cases[] = {
        {u"1120"_s, {{2026, 11, 20}}},
        {u"11/20"_s, {{2026, 11, 20}}},
        {u"11・20"_s, {{2026, 11, 20}}},
        {u"１１ー２０"_s, {{2026, 11, 20}}},
        {u"11月20日"_s, {{2026, 11, 20}}},
        {u"0531"_s, {{2027, 5, 31}}}, // where a consent of today ends
        {u"6/1"_s, {{2026, 6, 1}}},
        {u"2/29"_s, {}},
        {u"520"_s, {{2027, 5, 20}}},
        {u"111"_s, {{2027, 1, 11}, {2026, 11, 1}}},
        {u"21"_s, {{2026, 11, 21}}},
        {u"31"_s, {}},
        {u"8/11/3"_s, {{2026, 11, 3}}},
        {u"8.11.20"_s, {{2026, 11, 20}}},
        {u"081120"_s, {{2026, 11, 20}}},
        {u"81120"_s, {{2026, 11, 20}}},
        {u"26/11/3"_s, {{2026, 11, 3}}},
        {u"17/4/1"_s, {{2035, 4, 1}, {2017, 4, 1}}},
        {u"1/5/1"_s, {{2019, 5, 1}, {2001, 5, 1}}},
        {u"1/4/30"_s, {{2001, 4, 30}}}, // 平成 by then
        {u"75/1/1"_s, {}},
        {u"今日"_s, {today}},
        {u"+6m"_s, {{2027, 5, 22}}},
        {u"＋６か月"_s, {{2027, 5, 22}}},
        {u"-1M"_s, {{2026, 10, 22}}},
        {u"+14"_s, {{2026, 12, 6}}},
        {u"+2w"_s, {{2026, 12, 6}}},
        {u"+14d"_s, {{2026, 12, 6}}},
        {u"+1y"_s, {{2027, 11, 22}}},
        {u"R8.11.21"_s, {{2026, 11, 21}}},
        {u"R8.11"_s, {}},
        {u"202611"_s, {}},
        {u"あした"_s, {}},
        {u""_s, {}},
    };
    for (const auto &[typed, days] : cases)
        EXPECT_EQ(daysFromInput(typed, today), days) << typed.toStdString();
    EXPECT_EQ(daysFromInput(u"12/20"_s, {2027, 1, 5}), QList<QDate>({{2026, 12, 20}})) << "over New Year";
    EXPECT_EQ(daysFromInput(u"+3m"_s, {2026, 11, 30}), QList<QDate>({{2027, 2, 28}}));

    const std::pair<QString, QDate> months[] = {{u"11"_s, {2026, 11, 1}},     {u"5"_s, {2027, 5, 1}},
                                                {u"8/11"_s, {2026, 11, 1}},   {u"来月"_s, {2026, 12, 1}},
                                                {u"202611"_s, {2026, 11, 1}}, {u"+2m"_s, {2027, 1, 1}},
                                                {u"1120"_s, {2026, 11, 1}},   {u"R8.11"_s, {2026, 11, 1}}};
    for (const auto &[typed, month] : months)
        EXPECT_EQ(monthsFromInput(typed, today), QList<QDate>{month}) << typed.toStdString();
}

TEST(Dates, KeysAndWeekdays) {
    EXPECT_EQ(dateKey(QDate(2026, 1, 2)), 20260102);
    EXPECT_EQ(dateKey(QDate()), 0);
    EXPECT_EQ(dateFromKey(20260102), QDate(2026, 1, 2));
    for (const int key : {0, -1, 20260230, 20261301, 20260100, 5})
        EXPECT_FALSE(dateFromKey(key).isValid()) << key;
    EXPECT_EQ(weekdayText(QDate(2026, 11, 21)), u"土"_s);
    EXPECT_EQ(weekdayText(QDate(2026, 11, 22)), u"日"_s);
    EXPECT_EQ(weekdayText(QDate(2026, 11, 23)), u"月"_s);
    EXPECT_EQ(weekdayText(QDate()), u""_s);
}

} // namespace
