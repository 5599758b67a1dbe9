// What periods are reckoned by, as the database and the practice's settings have it.

#include "app/base/folders.h"
#include "app/base/settings.h"
#include "consent/rules/list_advisor.h"
#include "consent/rules/rules_query.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"
#include "tests/support/wrapped_provider.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(RuleQueries, ReadWhatTheRulesNeedOfTheBranch) {
    TestDatabase database;
    database.run(u"INSERT INTO HOLIDAY (iKyotenCd, iKyotenEb, iYear, iMonth, iDay, iChkCalendar) VALUES"
                 " (1, 1, 2026, 5, 3, 1), (1, 1, 2026, 5, 4, 0), (1, 1, 2026, 5, 5, -1),"
                 " (1, 1, 2026, 5, 6, NULL), (1, 2, 2026, 5, 7, 1), (1, 1, 2026, 2, 30, 1)"_s);
    const Result<Holidays> holidays = readHolidays(database.db, {1, 1});
    ASSERT_TRUE(holidays) << holidays.reason().toStdString();
    QList<int> found;
    for (QDate day(2026, 2, 1); day < QDate(2026, 6, 1); day = day.addDays(1))
        if (holidays->contains(day))
            found.append(day.month() * 100 + day.day());
    EXPECT_EQ(found, (QList{503, 505}));

    database.run(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb) VALUES (1, 1), (1, 2), (1, 3);"
                 "INSERT INTO CORP_SUB (iKyotenCd, iKyotenEb, iDouiUpdatePermitDay) VALUES"
                 " (1, 1, -1), (1, 2, NULL)"_s);
    for (const auto &[branch, expected] : {std::pair(1, -1), std::pair(2, 0), std::pair(3, 0)})
        EXPECT_EQ(*readUpdateReferenceDay(database.db, {1, short(branch)}), expected);

    database.run(u"DROP TABLE HOLIDAY; DROP TABLE DOUIKIROKU"_s);
    EXPECT_TRUE(readHolidays(database.db, {1, 1}).reason().contains(u"HOLIDAY"_s));
    EXPECT_TRUE(readPeriodSettings(database.db, {1, 1}, {9}).reason().contains(u"DOUIKIROKU"_s));
}

TEST(RuleQueries, PeriodSettingsAreThoseOfThePatientsLatestMonth) {
    TestDatabase database;
    database.run(u"INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo, iDouiKikan1,"
                 " iDouiKikan2, iDoui1CalcType, iKikanCalcType) VALUES"
                 " (1, 1, 9, '2026/01', 1, 1, 1, 1, 1), (1, 1, 9, '2026/03', 2, 2, 2, 2, 2),"
                 " (1, 1, 9, '2026/03', 1, 3, NULL, 2, 1), (1, 1, 11, '2026/02', 1, 4, 0, 0, 2),"
                 " (1, 2, 11, '2026/09', 1, 5, 0, 0, 1)"_s);
    // Few patients are listed in the statement, of many the whole branch is read.
    for (const int more : {0, 1000}) {
        std::vector<qint32> patients{9, 10, 11};
        for (int i = 0; i < more; ++i)
            patients.push_back(100 + i);
        const auto settings = readPeriodSettings(database.db, {1, 1}, patients);
        ASSERT_TRUE(settings) << settings.reason().toStdString();
        EXPECT_EQ(settings->size(), 3 + more);
        EXPECT_EQ(settings->value(9).iDouiKikan1, 3);
        EXPECT_EQ(settings->value(9).iDouiKikan2, 0);
        EXPECT_EQ(settings->value(9).iDoui1CalcType, 2);
        EXPECT_EQ(settings->value(10).iDouiKikan1, 0);
        EXPECT_EQ(settings->value(11).iDouiKikan1, 4);
    }
}

class AdvisorTest : public testing::Test {
protected:
    AdvisorTest() {
        db.iInit(database.connectionString());
        db.iConnect();
        database.run(u"INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo, iDouiKikan1)"
                     " VALUES (1, 1, 7, '2026/05', 1, 6)"_s);
    }
    /// After a period that ends on 2026/11/30.
    Period next(int patient = 7) {
        const RunningConsent running{
            {1, 1, patient}, false, 0, {2026, 5, 20}, {{2026, 6, 1}, {2026, 11, 30}}};
        return advisor.nextPeriod(running, {2026, 11, 20});
    }

    TestDatabase database;
    QTemporaryDir programFolder;
    Folders folders{programFolder.path()};
    int selects = 0;
    cT_ADODB db{[this](const QString &text) {
        return std::make_unique<WrappedProvider>(makeProvider(text),
                                                 [this](QString &) { return ++selects > 0; });
    }};
    ListAdvisor advisor{folders, {1, 1}, db};
};

TEST_F(AdvisorTest, SeesWhatWasChangedOnceTheListIsReadAgain) {
    advisor.links.holidays = true;
    EXPECT_EQ(next(), (Period{{2026, 12, 1}, {2027, 5, 31}}));
    database.run(u"UPDATE DOUIKIROKU SET iDouiKikan1 = 2;"
                 "INSERT INTO HOLIDAY (iKyotenCd, iKyotenEb, iYear, iMonth, iDay, iChkCalendar)"
                 " VALUES (1, 1, 2026, 12, 1, 1)"_s);
    advisor.forget();
    db.iDisConnect(); // a lost connection is opened anew
    EXPECT_EQ(next(), (Period{{2026, 12, 2}, {2027, 1, 31}}));
    // The practice's default, where the patient has no type of his own: in whole months.
    QDir(programFolder.path()).mkpath(u"DATA"_s);
    ASSERT_EQ(Settings(folders).iWrite(Setting::同意書自動計算デフォルト, u"1,1,2"_s), 0);
    advisor.forget();
    EXPECT_EQ(next(), (Period{{2026, 12, 2}, {2027, 1, 31}}));
    database.run(u"DELETE FROM HOLIDAY"_s);
    advisor.forget();
    const RunningConsent running{{1, 1, 7}, false, 0, {2026, 5, 20}, {{2026, 6, 1}, {2026, 11, 15}}};
    EXPECT_EQ(advisor.nextPeriod(running, {2026, 11, 10}), (Period{{2026, 12, 1}, {2027, 1, 31}}));
}

TEST_F(AdvisorTest, AsksOnceForManyPatients) {
    std::vector<PatientKey> patients;
    for (int patient = 1; patient <= 2000; ++patient)
        patients.push_back({1, 1, patient});
    selects = 0;
    advisor.prepare(patients);
    EXPECT_EQ(selects, 1);
    for (int patient = 1; patient <= 2000; ++patient)
        EXPECT_TRUE(next(patient).end.isValid());
    EXPECT_EQ(selects, 1);
}
