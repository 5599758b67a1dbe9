#include "consent/record/renewal_run.h"

#include "tests/consent/consent_rows.h"
#include "tests/support/failing_provider.h"
#include "tests/support/test_environment.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using enum RenewalOutcome;

namespace {

RenewalRow rowOf(qint32 patient, const QDate &answer, short deformity = 0, qint32 nDate = 20251120) {
    return {.key = {{1, 1, patient}, nDate, deformity, deformity == 0 ? 0 : nDate},
            .name = u"利用者%1"_s.arg(patient),
            .consentDate = QDate(2025, 11, 20),
            .reConsent = {answer, {{2026, 6, 1}, {2026, 11, 30}}},
            .newest = true};
}

QList<RenewalOutcome> times(int count, RenewalOutcome outcome) {
    return QList<RenewalOutcome>(count, outcome);
}

class RenewalRuns : public testing::Test {
protected:
    void insert(const RenewalRow &row) {
        const QString date = row.reConsent.date.toString(u"yyyy/MM/dd"_s);
        QMap<QString, QString> literals =
            answered(date, u"2026/06/01"_s, u"2026/11/30"_s, row.key.iHenkeiFlg != 0);
        literals.insert({{u"iNewestFlg"_s, u"1"_s}, {u"tDouiDay"_s, u"'2025/11/20'"_s}});
        rows.insert(row.key, literals);
    }
    QList<RenewalRow> insertMany(qint32 patients) {
        QList<RenewalRow> ticked;
        for (qint32 patient = 1; patient <= patients; ++patient)
            ticked.append(rowOf(patient, {2026, 5, 20}));
        insert(ticked.first());
        QStringList columns;
        for (const SuiteColumn &column : suiteColumns(u"RIYOUSHA_DOUI_REC"_s))
            columns.append(column.name);
        const QString names = columns.join(u", ");
        columns.replace(columns.indexOf(u"nIDNo"), u"n"_s);
        database.run(u"WITH RECURSIVE p(n) AS (VALUES(2) UNION ALL SELECT n + 1 FROM p WHERE n < %1)"
                     " INSERT INTO RIYOUSHA_DOUI_REC (%2) SELECT %3 FROM p, RIYOUSHA_DOUI_REC"_s.arg(patients)
                         .arg(names, columns.join(u", ")));
        return ticked;
    }
    static QList<RenewalOutcome> outcomes(const QList<RenewalResult> &results) {
        QList<RenewalOutcome> list;
        for (const RenewalResult &result : results)
            list.append(result.outcome);
        return list;
    }

    TestDatabase database;
    ConsentRows rows{database};
    RenewalRun run{database.db};
};

} // namespace

TEST_F(RenewalRuns, RefusedRowsAreNamedAndTheOthersRenewed) {
    const QDate answer(2026, 5, 20);
    QList<RenewalRow> ticked{rowOf(1, answer), rowOf(2, {}), rowOf(3, answer, 1), rowOf(4, answer),
                             rowOf(5, {2025, 11, 20})};
    for (const RenewalRow &row : ticked)
        if (row.key.patient.nIDNo != 4)
            insert(row);
    QList<int> seen;
    const QList<RenewalResult> results = run.renew(ticked, [&](int done, int total) {
        seen.append(done);
        return total == 5;
    });
    EXPECT_EQ(outcomes(results), (QList{Renewed, Refused, Renewed, Refused, Refused}));
    EXPECT_EQ(results[1].reason, u"再同意日が入力されていません。"_s);
    EXPECT_EQ(results[3].reason, u"RIYOUSHA_DOUI_REC元データ取得時にエラーが発生しました。"_s);
    EXPECT_EQ(results[4].row.name, u"利用者5"_s);
    EXPECT_EQ(seen, QList{5});
    EXPECT_EQ(rows.newest({1, 1, 1}), QStringList{u"20260520/0/0"_s});
    EXPECT_EQ(rows.newest({1, 1, 3}), QStringList{u"20260520/1/20260520"_s});
    EXPECT_EQ(countOutcome(results, Renewed), 2);
}

TEST_F(RenewalRuns, CancelLeavesTheRestAsItWas) {
    const QList<RenewalRow> ticked = insertMany(70);
    const QList<RenewalResult> results = run.renew(ticked, [](int done, int) { return done < 50; });
    EXPECT_EQ(outcomes(results), times(50, Renewed) + times(20, NotReached));
    EXPECT_EQ(rows.all().size(), 120);
    EXPECT_FALSE(results.last().reason.isEmpty());
}

// Both rows of a patient go onto one date, or one onto the other's own date: the later would destroy what
// the earlier made, or the earlier what the later still needs.
TEST_F(RenewalRuns, RowsThatWouldDestroyEachOtherAreRefused) {
    const QDate answer(2026, 5, 20);
    QList<RenewalRow> ticked{rowOf(1, answer, 1), rowOf(1, answer, 1), rowOf(2, answer),
                             rowOf(2, {2026, 5, 21}, 0, 20260520)};
    ticked[1].key.nHenkeiDouiDate = 20251121;
    for (const RenewalRow &row : ticked)
        insert(row);
    EXPECT_EQ(outcomes(run.renew(ticked)), (QList{Refused, Refused, Refused, Renewed}));
    EXPECT_EQ(rows.all().size(), 5);
}

TEST_F(RenewalRuns, RowThatIsTickedTwiceIsRenewedOnce) {
    const RenewalRow row = rowOf(1, {2026, 5, 20});
    insert(row);
    EXPECT_EQ(outcomes(run.renew({row, row})), (QList{Renewed, Refused}));
    EXPECT_EQ(rows.all().size(), 2);
}

// A row that another program takes away at the last moment, one that the database refuses, and a failure that
// does not come again.
TEST_F(RenewalRuns, RowsOfABatchThatFailsGoOneByOne) {
    const QList<RenewalRow> ticked = insertMany(8);
    int statements = 0;
    cT_ADODB failing([&](const QString &text) {
        return std::make_unique<WrappedProvider>(makeProvider(text), [&](QString &sql) {
            const bool copies = sql.startsWith(u"INSERT");
            if (copies && sql.contains(u"nIDNo = 3 "))
                sql += u" and 1 = 0"_s;
            return ++statements != 4 && !(copies && sql.contains(u"nIDNo = 5 "));
        });
    });
    ASSERT_EQ(failing.iInit(database.connectionString()), 0);
    QList<int> seen;
    const QList<RenewalResult> results = RenewalRun(failing).renew(ticked, [&](int done, int) {
        seen.append(done);
        return true;
    });
    EXPECT_EQ(outcomes(results),
              (QList{Renewed, Renewed, Failed, Renewed, Failed, Renewed, Renewed, Renewed}));
    EXPECT_TRUE(results[2].reason.startsWith(u"RIYOUSHA_DOUI_REC元データ取得時にエラーが発生しました。"_s));
    EXPECT_TRUE(results[4].reason.contains(FailingConnection::description));
    EXPECT_EQ(rows.all().size(), 14);
    EXPECT_EQ(seen, (QList{1, 2, 3, 4, 5, 6, 7, 8})) << "one can stop it in the middle";
}

TEST_F(RenewalRuns, ABatchWhoseConnectionIsLostIsUntouchedUnlessTheServerIsBackAtOnce) {
    if (onWindows())
        GTEST_SKIP() << "no file that is in use can be moved away";
    const QList<RenewalRow> ticked = insertMany(120);
    const QString away = database.path() + u".away"_s;
    for (const bool back : {false, true}) {
        int copies = 0;
        WrappedProvider *dropping = nullptr;
        cT_ADODB dropped([&](const QString &text) {
            auto made = std::make_unique<WrappedProvider>(makeProvider(text), [&](QString &sql) {
                copies += sql.startsWith(u"INSERT");
                if (copies != 70)
                    return true;
                ++copies;
                dropping->close();
                if (!back)
                    QFile::rename(database.path(), away);
                return false;
            });
            dropping = made.get();
            return made;
        });
        ASSERT_EQ(dropped.iInit(database.connectionString()), 0);
        const QList<RenewalResult> results = RenewalRun(dropped).renew(ticked);
        if (!back) {
            QFile::rename(away, database.path());
            EXPECT_EQ(outcomes(results), times(50, Renewed) + times(50, Failed) + times(20, NotReached));
            EXPECT_TRUE(results.last().reason.contains(u"接続が切れた"_s));
        } else {
            EXPECT_EQ(outcomes(results), times(50, Refused) + times(70, Renewed));
        }
        EXPECT_EQ(rows.all().size(), back ? 240 : 170);
    }
}
