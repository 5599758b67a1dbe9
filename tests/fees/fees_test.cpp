#include "fees/band_check.h"
#include "fees/fees_query.h"
#include "fees/unit_prices.h"
#include "fees/visit_fees.h"
#include "tests/fees/practice.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

cD_往療費区分 bandOf(const QString &from, const QString &to, qint32 min, qint32 max, qint32 fee = 100) {
    return {.cEndDate = to,
            .cStartDate = from,
            .dMaxLen = max / 1000.0,
            .dMinLen = min / 1000.0,
            .nKingakuOuryou = fee,
            .nKingakuSejyutsu = 0,
            .nMaxLen = max,
            .nMinLen = min};
}

// Every price in its own place, and what has none in no place.
TEST_F(FeesTest, EachPriceHasItsPlace) {
    const QList<std::pair<int, int>> pairs{{1, 1},  {1, 2},  {1, 3},  {1, 4},  {1, 11}, {1, 12}, {1, 13},
                                           {1, 14}, {1, 15}, {1, 16}, {1, 17}, {1, 18}, {2, 1},  {2, 2},
                                           {9, 1},  {9, 2},  {9, 3},  {9, 11}, {9, 12}};
    for (const auto &[group, code] : pairs)
        price(u"2024/10/01"_s, u"2099/12/31"_s, u"%1, %2, %3"_s.arg(group).arg(code).arg(group * 100 + code));
    for (const QString &other :
         {u"1, 5, 7"_s, u"1, 19, 7"_s, u"2, 3, 7"_s, u"9, 4, 7"_s, u"9, 13, 7"_s, u"3, 1, 7"_s})
        price(u"2024/10/01"_s, u"2099/12/31"_s, other);
    cls単価 prices(environment);
    ASSERT_EQ(prices.iGetTanka(u"202410"_s), 0) << why();
    const std::pair<qint32, qint32> places[] = {
        {prices.nマッサージ, 101},    {prices.n変形徒手, 102},      {prices.n温按法, 103},
        {prices.n電気光線, 104},      {prices.n鍼灸1術, 111},       {prices.n鍼灸2術, 112},
        {prices.n鍼灸1術初回, 113},   {prices.n鍼灸2術初回, 114},   {prices.n電気鍼温灸器, 115},
        {prices.n鍼灸1術初検料, 116}, {prices.n鍼灸2術初検料, 117}, {prices.n施術報告書交付料, 118},
        {prices.n基本往療費, 201},    {prices.n加算往療費, 202},    {prices.n定額料金1割, 901},
        {prices.n定額料金2割, 902},   {prices.n定額料金3割, 903},   {prices.n実費施術費, 911},
        {prices.n実費交通費, 912},
    };
    for (const auto &[read, expected] : places)
        EXPECT_EQ(read, expected);
}

TEST_F(FeesTest, AMonthFindsThePricesOfItsTime) {
    price(u"2022/06/01"_s, u"2024/09/15"_s, u"1, 1, 350"_s);
    price(u"2024/10/20"_s, u"2099/12/31"_s, u"1, 1, 450"_s);
    price(u"2025/01/01"_s, u"2025/03/31"_s, u"1, 1, 999"_s);
    const struct {
        QString month;
        qint32 price;
    } cases[] = {{u"202205"_s, 0},   {u"202206"_s, 350}, {u"202409"_s, 350}, {u"202410"_s, 450},
                 {u"202502"_s, 999}, {u"202504"_s, 450}, {u"209912"_s, 450}, {u"210001"_s, 0}};
    for (const auto &c : cases) {
        cls単価 prices(environment);
        EXPECT_EQ(prices.iGetTanka(c.month), c.price == 0 ? -1 : 0) << c.month.toStdString();
        EXPECT_EQ(prices.nマッサージ, c.price) << c.month.toStdString();
    }
    ASSERT_EQ(messages.shown.size(), 2);
    EXPECT_EQ(said(), u"単価データがありません。"_s);
    EXPECT_EQ(messages.shown.last().icon, MessageIcon::Information);
}

TEST_F(FeesTest, WhatCannotBeReadIsTold) {
    cls単価 prices(environment);
    cls往療費 fees(environment);
    band(u"2024/10/01"_s, u"2099/12/31"_s, u"0, 4000, 2300"_s);
    ASSERT_EQ(fees.iGetOuryohiAll(u"202611"_s), 0);
    for (const QString &month : {u"202613"_s, u"2026"_s, u"２０２６１１"_s, u""_s, u"2026' OR"_s}) {
        EXPECT_EQ(prices.iGetTanka(month), -1) << month.toStdString();
        EXPECT_TRUE(said().contains(u"「%1」"_s.arg(month)) &&
                    said().endsWith(u"\r\niGetTanka() でエラー"_s));
        EXPECT_EQ(fees.iGetOuryohiAll(month), -1) << month.toStdString();
        EXPECT_TRUE(said().endsWith(u"\r\niGetOuryohiAll() でエラー"_s));
    }
    // The rows before the damaged one count.
    price(u"2024/10/01"_s, u"2099/12/31"_s, u"1, 1, 450"_s);
    price(u"2024/10/01"_s, u"2099/12/31"_s, u"1, 2, 'abc'"_s);
    price(u"2024/10/01"_s, u"2099/12/31"_s, u"1, 3, 180"_s);
    EXPECT_EQ(prices.iGetTanka(u"202611"_s), -1);
    EXPECT_EQ(said(), u"区分:1  コード：2\r単価の取得に失敗しました。"_s);
    EXPECT_EQ(messages.shown.last().title, u"DB Read Error!!"_s);
    EXPECT_EQ(prices.nマッサージ, 450);
    EXPECT_EQ(prices.n温按法, 0);
    band(u"2024/10/01"_s, u"2099/12/31"_s, u"4000, 'far', 2550"_s);
    EXPECT_EQ(fees.iGetOuryohiAll(u"202611"_s), -1);
    EXPECT_EQ(fees.i往療区分数(), 1);

    database.run(u"drop table 療養費単価; drop table 往療費区分"_s);
    EXPECT_EQ(prices.iGetTanka(u"202611"_s), -1);
    EXPECT_TRUE(said().contains(u"療養費単価"_s) && said().endsWith(u"\r\niGetTanka() でエラー"_s)) << why();
    writeConnection({});
    EXPECT_EQ(fees.iGetOuryohiAll(u"202611"_s), -1);
    EXPECT_EQ(said(), u"接続文字列取得できません。"_s);
    EXPECT_EQ(messages.shown.last().icon, MessageIcon::Critical);
}

TEST_F(FeesTest, ADistanceFindsItsFee) {
    // In any order, of any office.
    band(u"2024/10/01"_s, u"2099/12/31"_s, u"4000, 16000, 2550"_s);
    band(u"2024/10/01"_s, u"2099/12/31"_s, u"0, 2000, 2300"_s);
    band(u"2024/10/01"_s, u"2099/12/31"_s, u"2000, 4000, 70000"_s, 2);
    band(u"2022/06/01"_s, u"2024/09/30"_s, u"0, 99000, 1"_s);
    cls往療費 fees(environment);
    ASSERT_EQ(fees.iGetOuryohiAll(u"202410"_s), 0) << why();
    ASSERT_EQ(fees.i往療区分数(), 3);
    EXPECT_EQ(fees.n往療距離MAX(1), 4000);
    EXPECT_EQ(fees.n往療単価(1), 70000);
    EXPECT_EQ(fees.n往療単価(3) + fees.n往療距離MAX(-1), 0);
    constexpr qint32 most = std::numeric_limits<qint32>::max();
    const struct {
        qint32 distance;
        short lastBand, fee;
        qint32 counted;
    } cases[] = {
        {0, 1, 0, 0},
        {1, 0, 2300, 1},
        {2000, 0, 2300, 2000},
        {2001, 0, 4464, 2001}, // 70000 in 16 bits
        {4001, 0, 2550, 4001},
        {4001, 1, 4464, 4001},
        {4000, 1, 4464, 4000},
        {4001, 2, 2550, 4001},
        {16000, 0, 2550, 16000},
        {16001, 0, 2550, 16000},
        {most, 1, 4464, 16000},
        {-1, 0, 2300, -1},
        {std::numeric_limits<qint32>::min(), 1, 2300, std::numeric_limits<qint32>::min()},
    };
    for (const auto &c : cases) {
        qint32 distance = c.distance;
        EXPECT_EQ(fees.iGetOuryohi(distance, c.lastBand), c.fee) << c.distance << ' ' << c.lastBand;
        EXPECT_EQ(distance, c.counted);
    }
    // Loading again replaces; a single band has none before it; without bands a distance costs nothing.
    ASSERT_EQ(fees.iGetOuryohiAll(u"202409"_s), 0);
    qint32 far = 100000;
    EXPECT_EQ(fees.iGetOuryohi(far, 1), 1);
    ASSERT_EQ(fees.iGetOuryohiAll(u"202201"_s), 0);
    far = 100000;
    EXPECT_EQ(fees.iGetOuryohi(far, 0), 0);
    EXPECT_EQ(far, 100000);
}

TEST_F(FeesTest, BandsAreKeptByTheirTable) {
    band(u"2024/10/01"_s, u"2099/12/31"_s, u"0, 4000, 7"_s, 2);
    cT_往療費区分 table;
    table.iInit(database.db, {1, 1});
    EXPECT_EQ(table.iDataInsert(nullptr, -1, true), -1);
    EXPECT_EQ(table.sErrMsg(), u"往療費区分が無効です。"_s);
    EXPECT_EQ(table.iDataRead(nullptr), -1);
    const auto first = bandOf(u"2024/10/01"_s, u"2099/12/31"_s, 4000, 16000, 2550);
    const auto second = bandOf(u"2024/10/01"_s, u"2099/12/31"_s, 0, 4000, 2300);
    for (const auto *record : {&first, &second})
        ASSERT_EQ(table.iDataInsert(record, -1, true), 0) << table.sErrMsg().toStdString();
    auto key = second;
    key.cStartDate = u"2026/11/21"_s;
    ASSERT_EQ(table.iDataRead(&key), 0) << table.sErrMsg().toStdString();
    ASSERT_EQ(table.nデータ数(), 3) << "of all offices";
    EXPECT_EQ(table.cls往療費区分(2)->nMinLen, 4000);
    EXPECT_EQ(table.cls往療費区分(2)->dMaxLen, 16.0);
    key.nMinLen = 4000;
    ASSERT_EQ(table.iDataRead(&key, true), 0);
    ASSERT_EQ(table.nデータ数(), 1);
    key.cStartDate = u"2024/09/30"_s;
    ASSERT_EQ(table.iDataRead(&key), 0);
    EXPECT_EQ(table.nデータ数(), 0);
    auto dearer = second;
    dearer.nKingakuOuryou = 2400;
    ASSERT_EQ(table.iDataUpdate(&dearer, -1, true), 0);
    ASSERT_EQ(table.iData削除(&first, -1, true), 0);
    EXPECT_EQ(database.rows(u"select iKyotenCd, nMinLen, nKingakuOuryou from 往療費区分 order by 1"_s),
              (QStringList{u"1|0|2400"_s, u"2|0|7"_s}));
}

TEST_F(FeesTest, GapsAndOverlapsAreTold) {
    const QString from = u"2024/10/01"_s, to = u"2099/12/31"_s;
    const struct {
        const char *name;
        std::vector<cD_往療費区分> bands;
        QStringList odd;
        int wrong = 0;
    } cases[] = {
        {"none", {}, {}},
        {"in any order", {bandOf(from, to, 4000, 16000), bandOf(from, to, 0, 4000)}, {}},
        {"a metre beyond is no gap", {bandOf(from, to, 0, 4000), bandOf(from, to, 4001, 16000)}, {}},
        {"gap",
         {bandOf(from, to, 0, 4000), bandOf(from, to, 5000, 9000)},
         {u"2024/10～2099/12　4,000 m～5,000 m の区分がありません。"_s}},
        {"none for short ways",
         {bandOf(from, to, 500, 4000)},
         {u"2024/10～2099/12　0 m～500 m の区分がありません。"_s}},
        {"overlap",
         {bandOf(from, to, 0, 4000), bandOf(from, to, 3000, 9000)},
         {u"2024/10～2099/12　3,000 m～4,000 m の区分が重なっています。"_s}},
        {"the new period begins within the old one's last month",
         {bandOf(u"2022/06/01"_s, u"2024/10/15"_s, 0, 4000), bandOf(u"2024/10/16"_s, to, 0, 4000)},
         {u"2024/10～2024/10　0 m～4,000 m の区分が重なっています。"_s}},
        {"months between",
         {bandOf(u"2022/06/01"_s, u"2024/07/31"_s, 0, 4000), bandOf(from, to, 0, 4000)},
         {u"2024/08～2024/09　往療費の区分がありません。"_s}},
        {"a gap that outlives a change elsewhere is one",
         {bandOf(u"2024/01/01"_s, to, 0, 1000), bandOf(u"2024/01/01"_s, u"2024/06/30"_s, 2000, 3000),
          bandOf(u"2024/07/01"_s, to, 2000, 3000, 200)},
         {u"2024/01～2099/12　1,000 m～2,000 m の区分がありません。"_s}},
        {"the farthest", {bandOf(from, to, 0, std::numeric_limits<qint32>::max())}, {}},
        {"no dates", {bandOf({}, to, 0, 4000), bandOf(from, u"2099/2/3"_s, 0, 4000)}, {}, 2},
        {"ends before it begins", {bandOf(to, from, 0, 4000)}, {}, 1},
        {"lengths", {bandOf(from, to, -1, 4000), bandOf(from, to, 4000, 4000)}, {}, 2},
        {"a fee of more than 16 bits", {bandOf(from, to, 0, 4000, 32768)}, {}, 1},
        {"twice", {bandOf(from, to, 0, 4000), bandOf(from, to, 0, 5000)}, {}, 1},
    };
    for (const auto &c : cases) {
        const BandTroubles troubles = troublesOf(c.bands);
        EXPECT_EQ(troubles.odd, c.odd) << c.name;
        EXPECT_EQ(troubles.wrong.size(), c.wrong) << c.name;
    }
}

TEST_F(FeesTest, ANewPeriodIsSavedWholeOrNotAtAll) {
    band(u"2022/06/01"_s, u"2099/12/31"_s, u"0, 4000, 2300"_s);
    band(u"2022/06/01"_s, u"2099/12/31"_s, u"4000, 16000, 2550"_s);
    band(u"2022/06/01"_s, u"2099/12/31"_s, u"0, 4000, 7"_s, 2);
    const Branch office{1, 1};
    const Bands seen = *readBands(database.db, office);
    Bands now = seen;
    now[0].cEndDate = u"2024/09/30"_s;
    now.erase(now.begin() + 1);
    now.push_back(bandOf(u"2024/10/01"_s, u"2099/12/31"_s, 0, 16000, 2600));
    const QString all =
        u"select iKyotenCd, cStartDate, cEndDate, nMinLen, nKingakuOuryou from 往療費区分 order by 1, 2, 4"_s;
    const QStringList before = database.rows(all);
    // A row that the table refuses undoes the rows before it.
    Bands twice = now;
    twice.push_back(now.back());
    const Result<bool> refused = saveBands(database.db, office, seen, twice);
    ASSERT_FALSE(refused);
    EXPECT_FALSE(refused.reason().isEmpty());
    EXPECT_EQ(database.rows(all), before);
    const Result<bool> saved = saveBands(database.db, office, seen, now);
    ASSERT_TRUE(saved) << saved.reason().toStdString();
    EXPECT_TRUE(*saved);
    const QStringList after{u"1|2022/06/01|2024/09/30|0|2300"_s, u"1|2024/10/01|2099/12/31|0|2600"_s,
                            u"2|2022/06/01|2099/12/31|0|7"_s};
    EXPECT_EQ(database.rows(all), after);
    // Who read before that is refused.
    const Result<bool> late = saveBands(database.db, office, seen, {});
    ASSERT_TRUE(late);
    EXPECT_FALSE(*late);
    EXPECT_EQ(database.rows(all), after);
}

// The later band is not written together with the earlier one that still covers its first day.
TEST_F(FeesTest, OverlappingBandsAreMendedFromTheOldest) {
    band(u"2022/06/01"_s, u"2099/12/31"_s, u"0, 4000, 2300"_s);
    band(u"2024/10/01"_s, u"2099/12/31"_s, u"0, 4000, 2400"_s);
    const Branch office{1, 1};
    const Bands seen = *readBands(database.db, office);
    Bands now = seen;
    now[1].nKingakuOuryou = 2500;
    const Result<bool> refused = saveBands(database.db, office, seen, now);
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.reason().contains(u"2024/10/01"_s));
    now[0].cEndDate = u"2024/09/30"_s;
    ASSERT_TRUE(saveBands(database.db, office, seen, now));
    EXPECT_EQ(database.rows(u"select cEndDate, nKingakuOuryou from 往療費区分 order by cStartDate"_s),
              (QStringList{u"2024/09/30|2300"_s, u"2099/12/31|2500"_s}));
}

} // namespace
