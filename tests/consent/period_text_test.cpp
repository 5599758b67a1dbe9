#include "consent/rules/period_text.h"
#include "consent/rules/plausibility.h"
#include "consent/rules/renewal_permit.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(PeriodText, SaysHowANextPeriodCameAbout) {
    const Holidays twoDays({{2024, 5, 22}, {2024, 5, 23}});
    const Holidays newYear({{2027, 1, 1}, {2027, 1, 2}});
    const PeriodRule mid;
    const PeriodRule next{.months = 3, .placement = Placement::NextMonth};
    const struct {
        QDate consent, previousEnd;
        PeriodRule rule;
        const Holidays *holidays;
        QStringView text;
    } cases[] = {
        {{2024, 5, 20},
         {2024, 5, 21},
         mid,
         &twoDays,
         u"再同意 5/20 → 16日以降 → 11/30, 祝日 2日 → 開始 5/24"},
        {{2026, 5, 15}, {2026, 5, 31}, mid, nullptr, u"再同意 5/15 → 15日以前 → 10/31, 開始 6/1"},
        {{2026, 12, 20},
         {2026, 12, 31},
         mid,
         &newYear,
         u"再同意 12/20 → 16日以降 → 2027/6/30, 日曜 1日・祝日 2日 → 開始 2027/1/4"},
        {{2026, 6, 9},
         {2026, 5, 31},
         mid,
         nullptr,
         u"再同意 6/9 → 15日以前 → 11/30, 前回終了 5/31 より後の同意 → 開始 6/9"},
        {{2026, 5, 20},
         {2026, 6, 30},
         {.months = 1},
         nullptr,
         u"再同意 5/20 → 16日以降・1か月 → 6/30 は開始より前のため期間なし"},
        {{2018, 9, 20}, {2018, 9, 20}, next, nullptr, u"再同意 9/20 → 翌月1日から・3か月 → 12/31, 開始 10/1"},
        {{2018, 10, 1},
         {2018, 10, 31},
         next,
         nullptr,
         u"再同意 10/1 → 1日から・法改正により6か月 → 2019/4/30, 開始 11/1"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(
            explainPeriod(reckonNext(c.consent, c.previousEnd, c.rule, c.holidays), ConsentName::ReConsent),
            c.text.toString());
    EXPECT_EQ(explainPeriod(reckonFirst({2026, 5, 20}, mid), ConsentName::Consent),
              u"同意 5/20 → 16日以降 → 11/30, 開始 5/20"_s);
    EXPECT_EQ(explainPeriod(reckonFirst({}, mid), ConsentName::Consent), QString());
}

TEST(PeriodText, StoredPeriodIsComparedWithTheRule) {
    const Holidays newYear({{2027, 1, 1}, {2027, 1, 2}});
    const PeriodRule mid;
    const PeriodRule next{.months = 6, .placement = Placement::NextMonth};
    const struct {
        QDate consent;
        Period stored;
        PeriodRule rule;
        const Holidays *holidays;
        QStringView difference;
    } cases[] = {
        // a first consent, and one that follows another
        {{2026, 5, 20}, {{2026, 5, 20}, {2026, 11, 30}}, mid, nullptr, u""},
        {{2026, 5, 20}, {{2026, 6, 1}, {2026, 11, 30}}, mid, nullptr, u""},
        {{2026, 12, 20}, {{2027, 1, 1}, {2027, 6, 30}}, next, nullptr, u""},
        {{2026, 12, 20}, {{2027, 1, 4}, {2027, 6, 30}}, next, &newYear, u""},
        // what the rule does not give
        {{2026, 5, 20},
         {{2026, 6, 1}, {2026, 12, 31}},
         mid,
         nullptr,
         u"規則と異なります: 終了 12/31（規則 11/30）"},
        {{2026, 5, 20},
         {{2026, 5, 1}, {2026, 10, 31}},
         mid,
         nullptr,
         u"規則と異なります: 開始 5/1（規則 5/20）、終了 10/31（規則 11/30）"},
        {{2026, 5, 20},
         {{2026, 6, 15}, {2026, 12, 14}},
         next,
         nullptr,
         u"規則と異なります: 開始 6/15（規則 7/1）、終了 12/14（規則 12/31）"},
        {{2026, 5, 20},
         {},
         mid,
         nullptr,
         u"規則と異なります: 開始 なし（規則 5/20）、終了 なし（規則 11/30）"},
        {{}, {{2026, 6, 1}, {2026, 11, 30}}, mid, nullptr, u""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(periodDifference(c.stored, reckonStored(c.consent, c.stored, c.rule, c.holidays)),
                  c.difference.toString());
}

TEST(RenewalPermit, OpensFromTheReferenceDayOfTheMonthAfterTheRangeStart) {
    const QDate range(2026, 1, 1);
    const struct {
        QDate today;
        int day;
        bool permitted;
    } cases[] = {
        {{2026, 1, 31}, 0, false}, {{2026, 2, 10}, 0, false},  {{2026, 2, 11}, 0, true},
        {{2026, 3, 1}, 0, true},   {{2025, 12, 31}, 0, false}, {{2027, 1, 1}, 25, true},
        {{2026, 2, 1}, 1, true},   {{2026, 1, 31}, 1, false},  {{2026, 2, 24}, 25, false},
        {{2026, 2, 25}, 25, true}, {{2026, 2, 27}, -1, false}, {{2026, 2, 28}, -1, true},
        {{2026, 3, 1}, -1, true},  {{2026, 1, 31}, -1, false}, {{2026, 2, 28}, 30, false},
        {{2026, 2, 11}, -7, true}, {{2026, 2, 10}, -7, false},
    };
    for (const auto &c : cases) {
        const RenewalPermit permit = renewalPermit(c.today, range, c.day);
        EXPECT_EQ(permit.permitted, c.permitted)
            << c.today.toString(Qt::ISODate).toStdString() << " " << c.day;
        EXPECT_EQ(permit.refusal.isEmpty(), c.permitted);
    }
    EXPECT_TRUE(renewalPermit({2024, 2, 29}, {2024, 1, 31}, -1).permitted);
    EXPECT_FALSE(renewalPermit({2024, 2, 28}, {2024, 1, 31}, -1).permitted);
    EXPECT_TRUE(renewalPermit({2027, 1, 11}, {2026, 12, 1}, 11).permitted);
    EXPECT_FALSE(renewalPermit({2026, 12, 31}, {2026, 12, 1}, 11).permitted);
    EXPECT_FALSE(renewalPermit({2026, 12, 31}, {}, 11).permitted);
}

TEST(RenewalPermit, RefusalNamesTheReferenceDayAndTheFirstDayThatIsPermitted) {
    const struct {
        int day;
        QDate range;
        QString text;
    } cases[] = {
        {0,
         {2026, 2, 1},
         u"(11日)を過ぎてから更新可能となります。\r\n\r\n"
         "表示している対象期間の同意は、2026/03/11（水）から更新できます。"_s},
        {-1,
         {2026, 2, 1},
         u"(月末)を過ぎてから更新可能となります。\r\n\r\n"
         "表示している対象期間の同意は、2026/03/31（火）から更新できます。"_s},
        {31,
         {2026, 3, 15},
         u"(31日)を過ぎてから更新可能となります。\r\n\r\n"
         "表示している対象期間の同意は、2026/05/01（金）から更新できます。"_s},
        {5, {}, u"(5日)を過ぎてから更新可能となります。"_s},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(renewalPermit({2026, 2, 1}, c.range, c.day).refusal,
                  u"選択された同意書の更新を行うことはできません。\r\n更新基準日"_s + c.text);
    }
}

TEST(Plausibility, AsksAboutSlipsOfTheKeysAndNothingElse) {
    const QDate today(2026, 11, 21);
    const QDate ruledEnd(2027, 5, 31);
    const Period next{{2026, 12, 1}, ruledEnd};
    const struct {
        QDate consent;
        Period period;
        QDate running, ruledEnd;
        QString begins; ///< of the one doubt; empty: there is none
    } cases[] = {
        {{2026, 11, 28}, next, {2026, 6, 1}, ruledEnd, {}},
        {{2026, 11, 29}, next, {2026, 6, 1}, ruledEnd, u"再同意日 2026/11/29（日）は、今日より8日先"_s},
        {{2226, 11, 20}, {}, {}, {}, u"再同意日 2226/11/20（月）は、今日より約200年先"_s},
        {{1926, 11, 20}, {}, {2026, 6, 1}, {}, u"再同意日 1926/11/20（土）は、今日より約100年前"_s},
        {{2026, 6, 1}, {}, {2026, 6, 1}, {}, u"再同意日 2026/06/01（月）は、今の同意日 2026/06/01 より後"_s},
        {{2026, 11, 20},
         {{2026, 11, 19}, ruledEnd},
         {},
         ruledEnd,
         u"要加療開始 2026/11/19（木）は、再同意日"_s},
        {{2026, 11, 20},
         {{2226, 12, 1}, {}},
         {},
         {},
         u"要加療開始 2226/12/01（金）は、再同意日より約200年後"_s},
        {{}, {{2226, 12, 1}, {}}, {}, {}, u"要加療開始 2226/12/01（金）は、今日より約200年後"_s},
        {{2026, 11, 20},
         {next.start, {2027, 6, 1}},
         {},
         ruledEnd,
         u"要加療終了 2027/06/01（火）は、規則の終了日"_s},
        {{2026, 11, 20}, {next.start, {2027, 4, 30}}, {}, ruledEnd, {}},
        {{2026, 11, 20},
         {next.start, {2026, 11, 30}},
         {},
         ruledEnd,
         u"要加療終了 2026/11/30（月）は、要加療開始"_s},
        {{}, {{}, {2226, 5, 31}}, {}, {}, u"要加療終了 2226/05/31（水）までの期間は約199年"_s},
        {{2026, 11, 20}, {next.start, {2027, 7, 31}}, {}, {}, u"要加療終了 2027/07/31（土）までの期間は"_s},
    };
    for (const auto &c : cases) {
        const QStringList doubts =
            doubtsOf({u"再同意日"_s, c.consent, c.period, c.running, c.ruledEnd}, today);
        EXPECT_EQ(doubts.size(), c.begins.isEmpty() ? 0 : 1) << doubts.join(u'|').toStdString();
        EXPECT_TRUE(doubts.value(0).startsWith(c.begins)) << doubts.value(0).toStdString();
    }
}
