#include "consent/record/grid_save.h"
#include "consent/record/record_write.h"
#include "consent/record/renewal_run.h"
#include "consent/record/sent_marks.h"
#include "consent/screens/mail_claims.h"
#include "db/tables/schema.h"
#include "history/log_tables.h"
#include "tests/mail/smtp_server.h"
#include "tests/odbc/postgres_server.h"
#include "tests/odbc/slow_line.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QStringList>
#include <barrier>
#include <chrono>
#include <future>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const PostgresServer &serverOfRun() {
    static const PostgresServer server;
    EXPECT_EQ(server.problem().toStdString(), "");
    return server;
}

/// A program on a PC of its own.
struct Program {
    cT_ADODB db;

    explicit Program(quint16 port = serverOfRun().port()) {
        QString text = serverOfRun().connectionString();
        text.replace(u"Port=%1;"_s.arg(serverOfRun().port()), u"Port=%1;"_s.arg(port));
        EXPECT_EQ(db.iInit(text), 0);
        EXPECT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();
    }
    void run(const QString &sql) { EXPECT_EQ(db.iExecSQL(sql), 0) << db.sErrMsg().toStdString(); }
    QString value(const QString &sql) {
        Recordset rows;
        EXPECT_EQ(db.iOpenRecSet(rows, sql), 0) << db.sErrMsg().toStdString();
        return rows.rowCount() == 0 ? QString() : rows.text(0, 0);
    }
};

ConsentRowKey rowOf(qint32 patient) {
    return {{1, 1, patient}, 20251120, 0, 0};
}

Result<std::vector<size_t>> save(cT_ADODB &db, const std::vector<RowEdit> &edits) {
    return saveRows(db, edits, {u"一覧の保存"_s});
}

/// Both programs at once.
template <class First, class Second> auto atOnce(First first, Second second) {
    std::barrier start(2);
    auto other = std::async(std::launch::async, [&] {
        start.arrive_and_wait();
        return second();
    });
    start.arrive_and_wait();
    auto mine = first();
    return std::pair(std::move(mine), other.get());
}

class TwoPrograms : public testing::Test {
protected:
    static constexpr int patients = 12;

    void SetUp() override {
        EXPECT_TRUE(makeSchema(here.db));
        here.run(u"DELETE FROM RIYOUSHA; DELETE FROM RIYOUSHA_DOUI_REC"_s);
        insertPatients(1, patients);
    }

    void insertPatients(int first, int last) {
        here.run(
            u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, iTenki) SELECT 1, 1, n, 0 FROM "
            u"generate_series(%1, %2) AS n;"
            "INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg,"
            " nHenkeiDouiDate, iNewestFlg, iReceptDisabledFlg, iSendFlg, tDouiDay, tSaiDouiDay,"
            " tSaiDouiKaryoS, tSaiDouiKaryoE) SELECT 1, 1, n, 20251120, 0, 0, 1, 0, 0, '2025/11/20'::date,"
            " '2026/05/20'::date, '2026/06/01'::date, '2026/11/30'::date"
            " FROM generate_series(%1, %2) AS n"_s.arg(first)
                .arg(last));
    }

    static RenewalRow renewalOf(qint32 patient) {
        return {.key = rowOf(patient),
                .name = {},
                .consentDate = {2025, 11, 20},
                .reConsent = {{2026, 5, 20}, {{2026, 6, 1}, {2026, 11, 30}}}};
    }

    /// Remarks on all rows, over what was read of them.
    static std::vector<RowEdit> remarks(const QString &before, const QString &now, bool backwards,
                                        qint32 count = patients) {
        std::vector<RowEdit> edits;
        for (qint32 i = 1; i <= count; ++i) {
            RowEdit edit;
            edit.read.key = rowOf(backwards ? count + 1 - i : i);
            edit.read.values.reconsent = {2026, 5, 20};
            edit.read.values.nextStart = {2026, 6, 1};
            edit.read.values.nextEnd = {2026, 11, 30};
            edit.read.values.remark = before;
            edit.now = edit.read.values;
            edit.now.remark = now;
            edits.push_back(edit);
        }
        return edits;
    }

    Program here, there;
};

} // namespace

TEST_F(TwoPrograms, TheSecondWaitsForThePatientAndThenSeesWhatTheFirstWrote) {
    std::vector<RowEdit> edits = remarks({}, u"later"_s, false);
    edits.resize(1);
    RecordWrite first(here.db, {u"備考編集"_s});
    ASSERT_TRUE(first.lock({rowOf(1).patient}));
    // Nothing is written yet: only the lock keeps the second back.
    auto second = std::async(std::launch::async, [&] { return save(there.db, edits); });
    EXPECT_EQ(second.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);
    Program third;
    edits[0].read.key = rowOf(2);
    EXPECT_EQ(*save(third.db, edits), std::vector<size_t>()) << "another patient waits for nobody";

    first.change(sqlOfRow(rowOf(1)), {{u"cItiranBikou"_s, u"'first'"_s}});
    ASSERT_TRUE(first.commit());
    EXPECT_EQ(*second.get(), std::vector<size_t>{0});
    EXPECT_EQ(here.value(u"SELECT cItiranBikou FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s), u"first"_s);
}

TEST_F(TwoPrograms, AnAnswerIsTakenBackByItsWriterUntilTheOtherWroteTheRow) {
    RowEdit answer = remarks({}, {}, false).front();
    answer.now.received = short(1);
    answer.now.reconsent = {2026, 11, 20};
    const QString stored = u"SELECT iGetFlg || ' ' || tSaiDouiDay FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s;
    for (const bool overtaken : {false, true}) {
        answer.read.updateTime = here.value(u"SELECT tUpDateTime FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s);
        ASSERT_EQ(*save(here.db, {answer}), std::vector<size_t>());
        EXPECT_TRUE(here.value(stored).startsWith(u"1 2026-11-20"_s)) << here.value(stored).toStdString();
        RowEdit back{answer.read, answer.read.values};
        back.read.values = answer.now;
        back.read.updateTime = here.value(u"SELECT tUpDateTime FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s);
        if (overtaken)
            there.run(u"UPDATE RIYOUSHA_DOUI_REC SET tUpDateTime = '2020/01/01'"_s);
        EXPECT_EQ(save(here.db, {back})->size(), overtaken ? 1u : 0u);
        EXPECT_EQ(here.value(stored).isEmpty(), !overtaken) << "without an answer there is no mark";
    }
}

TEST_F(TwoPrograms, ThatWriteTheSameRowsInOppositeOrderDoNotWaitForEachOther) {
    QString before;
    for (int round = 0; round < 25; ++round) {
        const QString mine = u"a%1"_s.arg(round), theirs = u"b%1"_s.arg(round);
        const auto [one, other] = atOnce([&] { return save(here.db, remarks(before, mine, false)); },
                                         [&] { return save(there.db, remarks(before, theirs, true)); });
        ASSERT_TRUE(one) << one.reason().toStdString();
        ASSERT_TRUE(other) << other.reason().toStdString();
        // One of the two saved all, the other nothing.
        ASSERT_NE(one->empty(), other->empty());
        before = one->empty() ? mine : theirs;
        ASSERT_EQ(here.value(u"SELECT min(cItiranBikou) || max(cItiranBikou) FROM RIYOUSHA_DOUI_REC"_s),
                  before + before);
        here.run(u"UPDATE RIYOUSHA_DOUI_REC SET tUpDateTime = Null"_s);
    }
}

TEST_F(TwoPrograms, ThatRenewTheSameRowMakeOneSuccessor) {
    for (qint32 patient = 1; patient <= patients; ++patient) {
        const RenewalRow row = renewalOf(patient);
        ConsentRenewal one(here.db), other(there.db);
        const auto [mine, theirs] = atOnce([&] { return one.renew(row); }, [&] { return other.renew(row); });
        EXPECT_EQ(mine + theirs, -1);
        EXPECT_EQ(mine == 0 ? other.sErrMsg() : one.sErrMsg(),
                  u"この同意は、すでに新しい同意に更新されています。"_s);
    }
    EXPECT_EQ(here.value(u"SELECT count(*) FROM RIYOUSHA_DOUI_REC"_s), QString::number(2 * patients));
}

TEST_F(TwoPrograms, ThatRenewTheSameRowsInBatchesRenewEachOnce) {
    constexpr int many = 120;
    insertPatients(patients + 1, many);
    QList<RenewalRow> rows;
    for (qint32 patient = 1; patient <= many; ++patient)
        rows.append(renewalOf(patient));
    const QList<RenewalRow> backwards(rows.rbegin(), rows.rend());
    const auto [mine, theirs] = atOnce([&] { return RenewalRun(here.db).renew(rows); },
                                       [&] { return RenewalRun(there.db).renew(backwards); });
    EXPECT_EQ(countOutcome(mine, RenewalOutcome::Failed) + countOutcome(theirs, RenewalOutcome::Failed), 0);
    EXPECT_EQ(countOutcome(mine, RenewalOutcome::Renewed) + countOutcome(theirs, RenewalOutcome::Renewed),
              many);
    EXPECT_EQ(here.value(u"SELECT count(*) || ' ' || sum(iNewestFlg) FROM RIYOUSHA_DOUI_REC"
                         " WHERE nDate = 20260520 OR iNewestFlg = 1"_s),
              u"120 120"_s);
}

TEST_F(TwoPrograms, AProgramAtTheEndOfALongLineTravelsItLessThanOnceForTwoRows) {
    constexpr int many = 150;
    insertPatients(patients + 1, many);
    const SlowLine line(serverOfRun().port(), std::chrono::milliseconds(0));
    Program far(line.port());
    settleLog(far.db); // asked once a log-in
    int before = line.roundTrips();
    EXPECT_EQ(*save(far.db, remarks({}, u"far"_s, false, many)), std::vector<size_t>());
    EXPECT_LE(line.roundTrips() - before, many / 10);
    far.run(u"UPDATE RIYOUSHA_DOUI_REC SET iOutputFlg = 1"_s);

    QList<RenewalRow> rows;
    for (qint32 patient = 1; patient <= many; ++patient)
        rows.append(renewalOf(patient));
    before = line.roundTrips();
    EXPECT_EQ(countOutcome(RenewalRun(far.db).renew(rows), RenewalOutcome::Renewed), many);
    EXPECT_LE(line.roundTrips() - before, many / 5);
}

/// Each program holds what the other one waits for: the server undoes one of the two.
TEST_F(TwoPrograms, TheVictimOfADeadlockIsDoneAgain) {
    here.run(u"SET deadlock_timeout = '20ms'"_s);
    there.run(u"SET deadlock_timeout = '20ms'"_s);
    const auto crosswise = [](Program &program, qint32 first, qint32 second, std::barrier<> &held) {
        int tries = 0;
        const Result<> written = againAfterDeadlock(program.db, [&]() -> Result<> {
            ++tries;
            RecordWrite write(program.db, {u"備考編集"_s});
            if (const Result<> locked = write.lock({rowOf(first).patient}); !locked)
                return locked;
            if (tries == 1)
                held.arrive_and_wait();
            if (const Result<> locked = write.lock({rowOf(second).patient}); !locked)
                return locked;
            write.change(sqlOfRow(rowOf(first)), {{u"nDouiUpMonth"_s, u"COALESCE(nDouiUpMonth, 0) + 1"_s}});
            return write.commit();
        });
        EXPECT_TRUE(written) << written.reason().toStdString();
        EXPECT_TRUE(program.db.isConnected());
        return tries;
    };
    std::barrier held(2);
    const auto [mine, theirs] =
        atOnce([&] { return crosswise(here, 1, 2, held); }, [&] { return crosswise(there, 2, 1, held); });
    EXPECT_EQ(mine + theirs, 3);
    EXPECT_EQ(here.value(u"SELECT sum(nDouiUpMonth) FROM RIYOUSHA_DOUI_REC"_s), u"2"_s);
}

TEST_F(TwoPrograms, ThatMailOfTheSameRowsClaimThemOnce) {
    std::vector<NoticeOfDate> dates;
    for (qint32 patient = 1; patient <= patients; ++patient)
        dates.push_back({rowOf(patient).patient, 20251120});
    const std::vector<NoticeOfDate> backwards(dates.rbegin(), dates.rend());
    for (int round = 0; round < 10; ++round) {
        const auto [mine, theirs] = atOnce([&] { return claimForMail(here.db, dates); },
                                           [&] { return claimForMail(there.db, backwards); });
        ASSERT_TRUE(mine) << mine.reason().toStdString();
        ASSERT_TRUE(theirs) << theirs.reason().toStdString();
        EXPECT_NE(mine->overtaken.empty(), theirs->overtaken.empty());
        EXPECT_EQ(mine->rows.size() + theirs->rows.size(), size_t(patients));
        ASSERT_TRUE(giveBack(here.db, mine->overtaken.empty() ? *mine : *theirs));
        EXPECT_EQ(here.value(u"SELECT sum(iSendFlg) FROM RIYOUSHA_DOUI_REC"_s), u"0"_s);
    }
}

TEST_F(TwoPrograms, ThatMailTheSameCounsellorSendOneMail) {
    const QTemporaryDir log;
    QDir::setCurrent(log.path());
    const SmtpServer server(u"--wait 0.3"_s);
    MailSettings settings;
    settings.server = {u"localhost"_s, server.port(), 5, MailSecurity::None, {}, {}, {}};
    settings.senderAddress = u"doui@example.jp"_s;
    const std::vector<MailRecipient> recipients{
        {{7, u"佐藤"_s, u"a@example.jp"_s}, {{rowOf(1).patient, u"利用者1"_s, 20251120}}, {}}};
    const auto mailFrom = [&](cT_ADODB &db, MailWatch &watch) {
        const FixedClock clock(QDate(2026, 5, 20));
        mEmail mail(settings, clock);
        const TestInstallation practice;
        RecordMailClaims claims(practice.environment, db);
        return runMails(claims, mail, recipients, clock.today(), watch)[0].kind;
    };
    /// A colleague presses the key while the mail is on its way.
    struct Watch : MailWatch {
        void begins(size_t) override {}
        void ended(size_t, const MailResult &) override {}
        bool goOn() override {
            if (++calls == 2 && meanwhile)
                meanwhile();
            return true;
        }
        int calls = 0;
        std::function<void()> meanwhile;
    } mine, theirs;
    mine.meanwhile = [&] { EXPECT_EQ(mailFrom(there.db, theirs), MailResult::Overtaken); };
    EXPECT_EQ(mailFrom(here.db, mine), MailResult::Sent);
    EXPECT_GE(mine.calls, 2);
    EXPECT_EQ(server.mails().size(), 1);
}
