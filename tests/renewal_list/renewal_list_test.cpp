// Who stands in the renewal list, in what order, and what each column says.

#include "app/base/codepage932.h"
#include "tests/renewal_list/renewals.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Order = RenewalListOptions::Order;
using PageBreak = RenewalListOptions::PageBreak;
using Range = RenewalListOptions::Range;

namespace {

class RenewalListTest : public testing::Test, protected Renewals {};

TEST_F(RenewalListTest, ListsWhoseConsentEndsInTheTimeAskedFor) {
    const auto numbered = [this](Range range) {
        RenewalListQuery asked = query(range);
        asked.options.order = Order::Number;
        return listed(asked);
    };
    EXPECT_EQ(
        numbered(Range::Open),
        (QStringList{u"101 2026/11/30"_s, u"102 2026/12/31"_s, u"103 2026/12/10"_s, u"103 2026/11/30"_s,
                     u"104 2026/11/20"_s, u"105 2027/04/30"_s, u"108 2026/11/01"_s, u"112 2026/11/21"_s}));
    EXPECT_EQ(numbered(Range::Month),
              (QStringList{u"101 2026/11/30"_s, u"103 2026/11/30"_s, u"104 2026/11/20"_s, u"108 2026/11/01"_s,
                           u"112 2026/11/21"_s}));
    EXPECT_EQ(numbered(Range::TwoMonths),
              (QStringList{u"101 2026/11/30"_s, u"102 2026/12/31"_s, u"103 2026/12/10"_s, u"103 2026/11/30"_s,
                           u"104 2026/11/20"_s, u"108 2026/11/01"_s, u"112 2026/11/21"_s}));
    // Of 101 the correction alone has ended by yesterday: its line shows its own period.
    EXPECT_EQ(numbered(Range::Ended),
              (QStringList{u"101 2026/11/15"_s, u"104 2026/11/20"_s, u"108 2026/11/01"_s}));
}

TEST_F(RenewalListTest, StandsInTheOrderChosenAndPageBreaksComeFirst) {
    const auto ordered = [this](Order order, PageBreak pageBreak = PageBreak::None) {
        RenewalListQuery asked = query(Range::TwoMonths);
        asked.options.order = order;
        asked.options.pageBreak = pageBreak;
        QStringList numbers;
        for (const DueConsent &line : lines(asked))
            numbers += QString::number(line.patient);
        return numbers.join(u' ');
    };
    // Nobody, 6, 7; a counsellor where there is one; kana whatever their width, unknown first.
    EXPECT_EQ(ordered(Order::PractitionerAndCounsellor), u"102 108 112 103 103 104 101"_s);
    EXPECT_EQ(ordered(Order::Practitioner), u"102 108 103 103 104 112 101"_s);
    EXPECT_EQ(ordered(Order::PeriodEnd), u"108 101 104 112 103 103 102"_s);
    EXPECT_EQ(ordered(Order::Doctor), u"108 102 101 103 112 103 104"_s);
    EXPECT_EQ(ordered(Order::Number, PageBreak::Practitioner), u"102 108 103 103 104 112 101"_s);
    EXPECT_EQ(ordered(Order::PeriodEnd, PageBreak::Counsellor), u"108 102 112 103 103 101 104"_s);
}

TEST_F(RenewalListTest, SaysEverythingThatIsKnown) {
    RenewalListOptions options;
    options.month = QDate(2026, 11, 1);
    options.pageBreak = PageBreak::Counsellor;
    EXPECT_EQ(record(101, options),
              (QStringList{u"枠線描画=1"_s,
                           u"何月分=\"令和08年11月\""_s,
                           u"検索内容=\"令和08年11月以降に同意期間が切れている利用者\""_s,
                           u"改ページ条件=\"相談員\""_s,
                           u"改ページID=32"_s,
                           u"主担当施術者ID=7"_s,
                           u"主担当施術者名=\"腕　二\""_s,
                           u"相談員ID=32"_s,
                           u"相談員名=\"相談　二\""_s,
                           u"明細No=1"_s,
                           u"利用者ID=101"_s,
                           u"利用者名=\"全　部\""_s,
                           u"利用者カナ=\"ﾍﾞ\""_s,
                           u"施術区分=0"_s,
                           u"施術区分表示=\"マッサージ\""_s,
                           u"変形徒手有無=\"有\""_s,
                           u"要加療期間自=\"2026/06/01\""_s,
                           u"要加療期間至=\"2026/11/30\""_s,
                           u"変形徒手期間自=\"2026/11/02\""_s,
                           u"変形徒手期間至=\"2026/11/14\""_s,
                           u"同意日=\"2026/05/28\""_s,
                           u"診察日=\"2026/05/27\""_s,
                           u"初療日=\"2026/01/31\""_s,
                           u"初療日からの経過月=11"_s,
                           u"医師ID=\"12\""_s,
                           u"医師名=\"山田'一\""_s,
                           u"医療機関ID=70"_s,
                           u"医療機関名=\"緑病院\""_s,
                           u"医療機関住所=\"病院町1　2階\""_s,
                           u"病院別依頼方法=\"用紙郵送\""_s,
                           u"個別依頼方法=\"ＦＡＸ\""_s}));
}

TEST_F(RenewalListTest, LeavesEmptyWhatIsNotKnown) {
    RenewalListOptions options;
    options.month = QDate(2026, 11, 1);
    options.range = Range::TwoMonths;
    const QStringList fields = record(102, options);
    EXPECT_EQ(
        fields.mid(2, 8),
        (QStringList{u"検索内容=\"令和08年11月以降に同意期間が切れている利用者（令和08年12月末日まで）\""_s,
                     u"改ページ条件=\"なし\""_s, u"改ページID=\"\""_s, u"主担当施術者ID=\"\""_s,
                     u"主担当施術者名=\"\""_s, u"相談員ID=\"\""_s, u"相談員名=\"\""_s, u"明細No=1"_s}));
    EXPECT_EQ(fields.mid(12),
              (QStringList{u"利用者カナ=\"\""_s, u"施術区分=1"_s, u"施術区分表示=\"鍼灸\""_s,
                           u"変形徒手有無=\"無\""_s, u"要加療期間自=\"\""_s, u"要加療期間至=\"2026/12/31\""_s,
                           u"変形徒手期間自=\"\""_s, u"変形徒手期間至=\"\""_s, u"同意日=\"\""_s,
                           u"診察日=\"\""_s, u"初療日=\"\""_s, u"初療日からの経過月=\"\""_s,
                           u"医師ID=\"99\""_s, u"医師名=\"記録の医師\""_s, u"医療機関ID=\"\""_s,
                           u"医療機関名=\"記録の医院\""_s, u"医療機関住所=\"記録の住所\""_s,
                           u"病院別依頼方法=\"\""_s, u"個別依頼方法=\"訪問\""_s}));
    // A correction without a period of its own has its consent's, and numbers begin anew for everybody.
    EXPECT_TRUE(record(112, options).contains(u"変形徒手期間至=\"2026/11/21\""_s));
}

TEST_F(RenewalListTest, CountsLinesForEverybodyAnew) {
    RenewalListQuery asked = query(Range::TwoMonths);
    asked.options.pageBreak = PageBreak::Practitioner;
    asked.options.order = Order::Number;
    const QString sheet = decode932(renewalData(lines(asked), asked.options).bytes());
    QStringList numbers;
    for (const QString &line : sheet.split(u"\r\n"_s, Qt::SkipEmptyParts).mid(1))
        numbers += line.split(u',').value(4) + u'-' + line.split(u',').value(9);
    EXPECT_EQ(numbers.join(u' '), u"\"\"-1 \"\"-2 6-1 6-2 6-3 6-4 7-1"_s);
}

TEST_F(RenewalListTest, CountsTheMonthsThatHaveBegun) {
    const QDate month(2026, 11, 1);
    EXPECT_EQ(monthsBegun(QDate(2026, 11, 30), month), 1);
    EXPECT_EQ(monthsBegun(QDate(2026, 10, 31), month), 2);
    EXPECT_EQ(monthsBegun(QDate(2025, 12, 1), month), 12);
    EXPECT_EQ(monthsBegun(QDate(2026, 12, 1), month), 0);
    EXPECT_EQ(monthsBegun({}, month), 0);
}

// More than a statement can name.
TEST_F(RenewalListTest, ListsThousandsInOneOrderAndNobodyElse) {
    constexpr qint32 first = 1001, many = 3000;
    const auto each = [](const QString &insert) {
        return u"WITH RECURSIVE n (i) AS (SELECT %1 UNION ALL SELECT i + 1 FROM n WHERE i < %2) "_s.arg(first)
                   .arg(first + many - 1) +
               insert;
    };
    database.run(
        each(u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, nTantou) SELECT 1, 1, i, i % 3 FROM n"_s));
    database.run(each(u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg,"
                      " nHenkeiDouiDate, iNewestFlg, tDouiKaryoE) SELECT 1, 1, i, 20260601, 0, 0, 1,"
                      " '2026/12/' || SUBSTR('0' || (i % 28 + 1), -2) FROM n"_s));
    RenewalListQuery asked = query();
    asked.options.order = Order::PeriodEnd;
    asked.options.pageBreak = PageBreak::Practitioner;
    asked.patients.clear();
    std::vector<std::tuple<int, int, int>> expected;
    for (qint32 number = first; number < first + many; number += 2) {
        asked.patients.insert(number);
        expected.emplace_back(number % 3, number % 28 + 1, number);
    }
    std::ranges::sort(expected);
    std::vector<std::tuple<int, int, int>> found;
    for (const DueConsent &line : lines(asked))
        found.emplace_back(line.staff, line.period.end.day(), line.patient);
    EXPECT_EQ(found, expected);
}

} // namespace
