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

class RenewalRuns : public testing::Test {
protected:
    void insert(const RenewalRow &row) {
        const QString date = row.reConsent.date.toString(u"yyyy/MM/dd"_s);
        QMap<QString, QString> literals =
            answered(date, u"2026/06/01"_s, u"2026/11/30"_s, row.key.iHenkeiFlg != 0);
        literals.insert({{u"iNewestFlg"_s, u"1"_s}, {u"tDouiDay"_s, u"'2025/11/20'"_s}});
        rows.insert(row.key, literals);
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
    EXPECT_EQ(seen, (QList{1, 2, 3, 4, 5}));
    EXPECT_EQ(rows.newest({1, 1, 1}), QStringList{u"20260520/0/0"_s});
    EXPECT_EQ(rows.newest({1, 1, 3}), QStringList{u"20260520/1/20260520"_s});
    EXPECT_EQ(countOutcome(results, Renewed), 2);
}

TEST_F(RenewalRuns, CancelLeavesTheRestAsItWas) {
    QList<RenewalRow> ticked;
    for (qint32 patient = 1; patient <= 5; ++patient) {
        ticked.append(rowOf(patient, {2026, 5, 20}));
        insert(ticked.last());
    }
    const QList<RenewalResult> results = run.renew(ticked, [](int done, int) { return done < 2; });
    EXPECT_EQ(outcomes(results), (QList{Renewed, Renewed, NotReached, NotReached, NotReached}));
    EXPECT_EQ(rows.all().size(), 7);
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

TEST_F(RenewalRuns, FailureOfOneRowDoesNotStopTheOthersAndALostConnectionDoes) {
    QList<RenewalRow> ticked;
    for (qint32 patient = 1; patient <= 3; ++patient) {
        ticked.append(rowOf(patient, {2026, 5, 20}));
        insert(ticked.last());
    }
    FailingConnection failing(database.connectionString(), 3);
    EXPECT_EQ(outcomes(RenewalRun(failing.db).renew(ticked)), (QList{Failed, Renewed, Renewed}));

    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
    for (const RenewalRow &row : ticked)
        insert(row);
    int left = 3;
    WrappedProvider *dropping = nullptr;
    cT_ADODB dropped([&](const QString &text) {
        auto made = std::make_unique<WrappedProvider>(makeProvider(text), [&](QString &) {
            if (--left == 0)
                dropping->close();
            return left != 0;
        });
        dropping = made.get();
        return made;
    });
    ASSERT_EQ(dropped.iInit(database.connectionString()), 0);
    EXPECT_EQ(outcomes(RenewalRun(dropped).renew(ticked)), (QList{Failed, Renewed, Renewed}))
        << "the server is there again at once";

    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
    for (const RenewalRow &row : ticked)
        insert(row);
    const QString away = database.path() + u".away"_s;
    const QList<RenewalResult> lost = RenewalRun(failing.db).renew(ticked, [&](int done, int) {
        if (done == 1) {
            failing.db.iDisConnect();
            QFile::rename(database.path(), away);
        }
        return true;
    });
    QFile::rename(away, database.path());
    EXPECT_EQ(outcomes(lost), (QList{Renewed, Failed, NotReached}));
    EXPECT_EQ(rows.all().size(), 4);
}
