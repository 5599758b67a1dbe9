#include "consent/rules/period.h"
#include "tests/consent/counted_calendar.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

void PrintTo(const Period &period, std::ostream *out) {
    PrintTo(period.start, out);
    *out << " - ";
    PrintTo(period.end, out);
}

namespace {

constexpr int lastConsentYear = 2030;

struct Expected {
    int start, end;
};

// Months as the settings table of the test says them; the cut-over by comparing keys.
int countedMonths(int stored, int consentKey) {
    const int months = stored < 1 ? 6 : stored;
    return months == 3 && consentKey >= 20181001 ? 6 : months;
}

Expected countOut(const CountedCalendar &calendar, int consent, int earliest, int months, bool nextMonth) {
    if (nextMonth) {
        const int start = calendar.first(earliest);
        return {start, calendar.first(start, months + 1) - 1};
    }
    return {earliest, calendar.monthEnd(consent, calendar[consent].day > 15 ? months + 1 : months)};
}

Period toPeriod(const CountedCalendar &calendar, const Expected &expected) {
    if (expected.start > expected.end)
        return {};
    return {calendar[expected.start].date(), calendar[expected.end].date()};
}

} // namespace

TEST(Period, AgreesWithACountedCalendarOnEveryConsentDay) {
    const CountedCalendar calendar(lastConsentYear + 4);
    for (int day = 0; calendar[day].year <= lastConsentYear; ++day) {
        for (const short stored : std::initializer_list<short>{-1, 0, 1, 2, 3, 6, 12, 36}) {
            for (const short type : std::initializer_list<short>{0, 1, 2, 7}) {
                const PeriodRule rule = periodRule({.iDouiKikan1 = stored, .iKikanCalcType = type});
                const int months = countedMonths(stored, calendar[day].key());
                const Expected expected = countOut(calendar, day, day, months, type == 2);
                ASSERT_EQ(reckonFirst(calendar[day].date(), rule).period, toPeriod(calendar, expected))
                    << calendar[day].key() << " months " << stored << " type " << type;
            }
        }
    }
}

TEST(Period, NextPeriodAgreesWithACountedCalendarOnEveryEnd) {
    const CountedCalendar calendar(lastConsentYear + 4);
    std::mt19937 random(20151121);
    std::set<int> daysOff;
    std::vector<QDate> holidayDates;
    for (int i = 0; i < calendar.size(); ++i)
        if (random() % 9 == 0) {
            daysOff.insert(i);
            holidayDates.push_back(calendar[i].date());
        }
    std::shuffle(holidayDates.begin(), holidayDates.end(), random);
    const Holidays holidays(holidayDates);

    for (int end = 60; calendar[end].year <= lastConsentYear; ++end) {
        for (const int consentFromEnd : {-40, -7, 0, 1, 12}) {
            const int consent = end + consentFromEnd;
            for (const bool nextMonth : {false, true}) {
                const short months = short(1 + random() % 6);
                Expected expected = countOut(calendar, consent, std::max(end + 1, consent),
                                             countedMonths(months, calendar[consent].key()), nextMonth);
                const PeriodRule rule =
                    periodRule({.iDouiKikan1 = months, .iKikanCalcType = short(nextMonth ? 2 : 1)});
                const QDate consentDate = calendar[consent].date();
                const QDate endDate = calendar[end].date();
                ASSERT_EQ(reckonNext(consentDate, endDate, rule, nullptr).period,
                          toPeriod(calendar, expected))
                    << calendar[end].key() << " consent " << calendar[consent].key() << " months " << months;

                int sundays = 0;
                while (calendar[expected.start].weekday == 0 || daysOff.contains(expected.start))
                    sundays += calendar[expected.start++].weekday == 0;
                const PeriodReckoning skipped = reckonNext(consentDate, endDate, rule, &holidays);
                ASSERT_EQ(skipped.period, toPeriod(calendar, expected)) << calendar[end].key();
                ASSERT_EQ(skipped.sundays, sundays);
            }
        }
    }
}

TEST(Period, MonthsComeFromTheSettingThatTheFirstConsentsTypeNames) {
    const struct {
        PeriodSettings settings;
        int months;
        bool second;
    } cases[] = {
        {{}, 6, false},
        {{.iDouiKikan1 = 1, .iDouiKikan2 = 2, .iDoui1CalcType = 0}, 1, false},
        {{.iDouiKikan1 = 1, .iDouiKikan2 = 2, .iDoui1CalcType = 1}, 1, false},
        {{.iDouiKikan1 = 1, .iDouiKikan2 = 2, .iDoui1CalcType = 2}, 2, true},
        {{.iDouiKikan1 = 1, .iDouiKikan2 = 0, .iDoui1CalcType = 2}, 6, true},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(periodRule(c.settings).months, c.months);
        EXPECT_EQ(periodRule(c.settings).secondConsent, c.second);
    }
    EXPECT_EQ(deformityRule({.iDouiKikan1 = 6}, 1).months, 1);
    EXPECT_EQ(deformityRule({.iDouiKikan1 = 4}, 0).months, 4);
}

// The corners by hand, so that a fault shared by rule and counted calendar would show.
TEST(Period, CornersByHand) {
    const PeriodRule three = periodRule({.iDouiKikan1 = 3});
    EXPECT_EQ(reckonFirst({2018, 9, 30}, three).period.end, QDate(2018, 12, 31));
    EXPECT_EQ(reckonFirst({2018, 10, 1}, three).period.end, QDate(2019, 3, 31));
    const PeriodRule six;
    EXPECT_EQ(reckonFirst({2026, 5, 15}, six).period, (Period{{2026, 5, 15}, {2026, 10, 31}}));
    EXPECT_EQ(reckonFirst({2026, 5, 16}, six).period, (Period{{2026, 5, 16}, {2026, 11, 30}}));
    EXPECT_EQ(reckonFirst({2023, 8, 31}, six).period.end, QDate(2024, 2, 29));
    const PeriodRule next{.months = 1, .placement = Placement::NextMonth};
    EXPECT_EQ(reckonFirst({2026, 2, 1}, next).period, (Period{{2026, 2, 1}, {2026, 2, 28}}));
    EXPECT_EQ(reckonFirst({2026, 12, 2}, next).period, (Period{{2027, 1, 1}, {2027, 1, 31}}));

    // 2026/5/31 is a Sunday; 6/1 and 6/2 are registered, a Sunday that is registered as well counts once.
    const Holidays holidays({{2026, 6, 2}, {2026, 5, 31}, {2026, 6, 1}, {2026, 2, 30}});
    const PeriodReckoning skipped = reckonNext({2026, 5, 20}, {2026, 5, 30}, six, &holidays);
    EXPECT_EQ(skipped.period.start, QDate(2026, 6, 3));
    EXPECT_EQ(skipped.sundays, 1);
    EXPECT_EQ(skipped.holidays, 2);
}

TEST(Period, NothingIsProposedFromNothingOrBackwards) {
    EXPECT_EQ(reckonFirst({}, {}).period, Period());
    EXPECT_EQ(reckonNext({}, {2026, 5, 31}, {}, nullptr).period, Period());
    const PeriodRule one{.months = 1};
    EXPECT_EQ(reckonNext({2026, 4, 10}, {2026, 5, 31}, one, nullptr).period, Period());
    EXPECT_EQ(reckonNext({2026, 4, 10}, {}, one, nullptr).period, (Period{{2026, 4, 10}, {2026, 4, 30}}));
}

TEST(Period, StateOnADay) {
    const QDate day(2026, 5, 1);
    const struct {
        Period period;
        QStringView text;
    } cases[] = {
        {{{2026, 5, 2}, {2026, 11, 1}}, u"要加療開始"},
        {{{2026, 5, 1}, {2026, 5, 1}}, u"要加療途中"},
        {{{2025, 4, 30}, {2026, 5, 1}}, u"要加療途中"},
        {{{2025, 11, 1}, {2026, 4, 30}}, u"要加療終了"},
        {{{2026, 9, 1}, {2026, 6, 1}}, u""},
        {{{}, {2026, 4, 1}}, u"要加療終了"},
        {{{2026, 4, 1}, {}}, u"要加療途中"},
        {{}, u""},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(periodStateText(c.period, day), c.text.toString())
            << c.period.start.toString(Qt::ISODate).toStdString() << " "
            << c.period.end.toString(Qt::ISODate).toStdString();
    }
}
