#include "consent/entry/time_line.h"
#include "tests/support/test_environment.h"

#include "app/base/dates.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

Period days(int from, int to) {
    return {dateFromKey(from), dateFromKey(to)};
}

struct GapCase {
    const char *what;
    std::vector<TimeLineConsent> consents;
    QStringList gaps; ///< from-to
    QDate ended = {};
};

TEST(TimeLine, FindsTheDaysWithoutCover) {
    const QDate today(2026, 11, 21);
    const GapCase cases[] = {
        {"month ends meet", {{days(20260401, 20260930)}, {days(20261001, 20270228)}}, {}},
        {"one day is missing, over the end of February",
         {{days(20230901, 20240228)}, {days(20240301, 20270331)}},
         {u"20240229-20240229"_s}},
        {"overlapping, the longer first", {{days(20260101, 20261231)}, {days(20260301, 20260531)}}, {}},
        {"any order", {{days(20260701, 20261231)}, {days(20260101, 20260430)}}, {u"20260501-20260630"_s}},
        {"run out", {{days(20260501, 20261031)}}, {u"20261101-20261121"_s}},
        {"ended today", {{days(20260501, 20261121)}}, {}},
        {"a gap to come", {{days(20260501, 20261130)}, {days(20261202, 20270531)}}, {u"20261201-20261201"_s}},
        {"not for claims",
         {{days(20260101, 20260630)}, {days(20260701, 20261231), false, false}},
         {u"20260701-20261121"_s}},
        {"treatment ended in the meantime",
         {{days(20260101, 20260630)}},
         {u"20260701-20260710"_s},
         {2026, 7, 10}},
        {"treatment ended under cover", {{days(20260101, 20260630)}}, {}, {2026, 6, 1}},
        {"half a period and a turned one",
         {{days(20260101, 20261231)}, {{QDate(2020, 1, 1), {}}}, {days(20200301, 20200201)}},
         {}},
    };
    for (const GapCase &test : cases) {
        const TimeLine line = makeTimeLine(test.consents, today, test.ended);
        ASSERT_EQ(line.lanes.size(), 1) << test.what;
        QStringList gaps;
        for (const Period &gap : line.lanes[0].gaps)
            gaps.append(u"%1-%2"_s.arg(dateKey(gap.start)).arg(dateKey(gap.end)));
        EXPECT_EQ(gaps, test.gaps) << test.what;
    }
}

TEST(TimeLine, KeepsKindsAndOverlappingPeriodsApart) {
    const QDate today(2026, 11, 21);
    const std::vector<TimeLineConsent> consents{{days(20260415, 20261031)},
                                                {days(20261001, 20270331)},
                                                {days(20261101, 20261120), true},
                                                {days(20270401, 20270930)}};
    const TimeLine line = makeTimeLine(consents, today);
    ASSERT_EQ(line.lanes.size(), 2);
    EXPECT_EQ(line.shown, days(20260401, 20270930));
    EXPECT_EQ(line.lanes[0].tracks, 2);
    EXPECT_EQ(line.lanes[0].spans[2].track, 0) << "the first track is free again";
    EXPECT_EQ(line.lanes[1].spans[0].row, 2);
    EXPECT_EQ(coverText(line.lanes[0], today),
              u"同意：本日は要加療期間内（2027/09/30 まで、あと 313日）　空白なし"_s);
    EXPECT_EQ(coverText(line.lanes[1], today),
              u"変形徒手：2026/11/20 で要加療期間が終わっています　空白 1か所 計1日"_s);
    EXPECT_TRUE(makeTimeLine({}, today).lanes.empty());
}

} // namespace
