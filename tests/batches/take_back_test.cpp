#include "consent/batches/take_back_text.h"
#include "consent/record/entry_save.h"
#include "consent/record/sent_marks.h"
#include "history/batch.h"
#include "tests/batches/renewed_practice.h"
#include "tests/support/wrapped_provider.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const Branch office{1, 1};
const QDate someDay(2020, 1, 1);

class Practice : public RenewedPractice {
public:
    using RenewedPractice::RenewedPractice;

    TakeBackProposal propose(qint32 batch) {
        Result<TakeBackProposal> proposal = TakeBack(database.db, office).propose(batch);
        EXPECT_TRUE(proposal) << proposal.reason().toStdString();
        return proposal ? *proposal : TakeBackProposal{};
    }
    /// Takes back what can be, and gives the number of the run that did.
    qint32 takeBack(qint32 batch) {
        const Result<bool> taken = TakeBack(database.db, office).take(propose(batch));
        EXPECT_TRUE(taken && *taken) << taken.reason().toStdString();
        return database.value(u"SELECT MAX(nBatch) FROM DOUISHO_LOG_BATCH"_s).toInt();
    }
    BatchInfo infoOf(qint32 batch) {
        const Result<std::optional<BatchInfo>> info = readBatch(database.db, office, batch);
        EXPECT_TRUE(info && *info) << info.reason().toStdString();
        return info ? info->value_or(BatchInfo()) : BatchInfo();
    }
    Batch begin(const QString &kind) {
        Result<std::optional<Batch>> batch = Batch::begin(database.db, office, kind);
        EXPECT_TRUE(batch && *batch) << batch.reason().toStdString();
        return **batch;
    }
};

} // namespace

TEST(TakeBack, ARenewalGoesBackToTheLastColumnAndComesAgain) {
    Practice practice(4);
    const QStringList old = practice.rows();
    const qint32 renewal = practice.renew(practice.database.db);
    const QStringList renewed = practice.rows();
    ASSERT_EQ(renewed.size(), 2 * old.size());

    const qint32 taker = practice.takeBack(renewal);
    EXPECT_EQ(practice.rows(), old);
    EXPECT_EQ(practice.infoOf(renewal).takenBackBy, taker);
    EXPECT_EQ(practice.infoOf(taker).takesBack, renewal);
    EXPECT_EQ(practice.infoOf(taker).rows, 6);
    EXPECT_EQ(practice.propose(renewal).plan.goingBack(), 0);

    const qint32 again = practice.takeBack(taker);
    EXPECT_EQ(practice.rows(), renewed) << "a run that took back is taken back";
    EXPECT_EQ(practice.infoOf(renewal).takenBackBy, std::nullopt);
    EXPECT_EQ(practice.infoOf(taker).takenBackBy, again);
    practice.takeBack(renewal);
    EXPECT_EQ(practice.rows(), old) << "what holds again can be taken back again";
}

TEST(TakeBack, WhatSomebodyWroteSinceStaysWithItsFellowAndIsNamed) {
    const QString made = u" WHERE nIDNo = 1 AND nDate = 20260520"_s;
    const QString old = u" WHERE nIDNo = 1 AND nDate = 20251120"_s;
    const QString update = u"UPDATE RIYOUSHA_DOUI_REC SET "_s;
    const struct {
        QString sql, said;
    } cases[] = {
        {update + u"cItiranBikou = '電話済'"_s + made, u"その後に変更されました"_s},
        {update + u"cItiranBikou = NULL"_s + made, u"その後に変更されました"_s},
        {update + u"cMasByoumei = ''"_s + made, u"その後に変更されました"_s},
        {update + u"cPcName = 'PC-9', tUpDateTime = '2099/06/01 10:50:00'"_s + old,
         u"その後に変更されました（2099/06/01 10:50 PC-9）"_s},
        {update + u"iNewestFlg = 1"_s + old, u"その後に変更されました"_s},
        {u"DELETE FROM RIYOUSHA_DOUI_REC"_s + made, u"その後に削除されました"_s},
        {u"DELETE FROM RIYOUSHA_DOUI_REC"_s + old, u"その後に削除されました"_s},
    };
    for (const auto &c : cases) {
        Practice practice(2);
        const QStringList two = practice.rowsOf(2);
        const qint32 renewal = practice.renew(practice.database.db);
        practice.database.run(c.sql);
        const QStringList kept = practice.rowsOf(1);
        const QString question = takeBackQuestion(practice.propose(renewal), someDay);
        EXPECT_TRUE(
            question.contains(u"次の 1 件は元に戻せません。\r\n\r\n1 利用者1　"_s + c.said + u"\r\n"_s))
            << c.sql.toStdString() << question.toStdString();
        EXPECT_TRUE(question.contains(u"残りの 2 件を取り消します。"_s)) << question.toStdString();
        const qint32 taker = practice.takeBack(renewal);
        EXPECT_EQ(practice.rowsOf(1), kept) << c.sql.toStdString();
        EXPECT_EQ(practice.rowsOf(2), two);
        EXPECT_TRUE(practice.infoOf(renewal).partly && practice.infoOf(renewal).takenBackBy == taker);
    }
}

TEST(TakeBack, TheLogTellsWhoWroteARowSince) {
    Practice practice(2);
    const qint32 renewal = practice.renew(practice.database.db);
    const std::vector<ConsentDraft> consents = *readConsents(practice.database.db, {1, 1, 1});
    ASSERT_EQ(saveRemark(practice.database.db, consents.back(), u"電話済"_s).kind, RowOutcome::Done);
    const TakeBackProposal proposal = practice.propose(renewal);
    ASSERT_EQ(proposal.plan.left().size(), 1u);
    EXPECT_TRUE(
        takeBackQuestion(proposal, someDay).contains(practice.database.db.csGetComputerName() + u" 備考"_s))
        << takeBackQuestion(proposal, someDay).toStdString();

    // What stayed is mended by hand, and goes back with a second run.
    practice.takeBack(renewal);
    practice.database.run(u"DELETE FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1 AND nDate = 20260520"_s);
    EXPECT_TRUE(takeBackRefusal(practice.propose(renewal), someDay)
                    .contains(u"は取り消せません。\r\n\r\n1 利用者1　"_s));
}

TEST(TakeBack, ARunHalfOfWhoseRowsWereDeletedGoesBackByHalf) {
    Practice practice(4);
    const QStringList kept = practice.rowsOf(1) + practice.rowsOf(2);
    const qint32 renewal = practice.renew(practice.database.db);
    practice.database.run(u"DELETE FROM RIYOUSHA_DOUI_REC WHERE nIDNo > 2"_s);
    EXPECT_EQ(practice.propose(renewal).plan.left().size(), 3u);
    practice.takeBack(renewal);
    EXPECT_EQ(practice.rows(), kept);
}

TEST(TakeBack, BesideAConsentThatCameSinceTheNewestMarkIsRight) {
    Practice practice(1);
    const qint32 renewal = practice.renew(practice.database.db);
    practice.consents.insert({{1, 1, 1}, 20261001, 0, 0}, {{u"iNewestFlg"_s, u"1"_s}});
    practice.takeBack(renewal);
    EXPECT_EQ(practice.consents.newest({1, 1, 1}), QStringList{u"20261001/0/0"_s});
}

TEST(TakeBack, MarksOfLettersAndMailsBecomeWhatTheyWere) {
    Practice practice(2);
    const QStringList old = practice.rows();
    Batch letters = practice.begin(u"依頼書印刷"_s);
    const QString time = u"2026/05/01 08:09:10.123"_s;
    ASSERT_TRUE(
        markRequested(practice.database.db,
                      {{RenewedPractice::before(1), time, true}, {RenewedPractice::before(2, 1), time}},
                      letters.operation()));
    Batch mails = practice.begin(u"メール送信"_s);
    ASSERT_TRUE(claimForMail(practice.database.db, {{{1, 1, 1}, 20251120}}, mails.operation()));
    const Result<MailClaim> lost =
        claimForMail(practice.database.db, {{{1, 1, 2}, 20251120}}, mails.operation());
    ASSERT_TRUE(giveBack(practice.database.db, *lost, mails.operation()));

    EXPECT_TRUE(takeBackQuestion(practice.propose(letters.number()), someDay)
                    .contains(u"印刷した用紙そのものは戻りません。"_s));
    const TakeBackProposal ofMails = practice.propose(mails.number());
    EXPECT_TRUE(takeBackQuestion(ofMails, someDay).contains(u"送ったメールそのものは戻りません。"_s));
    EXPECT_EQ(ofMails.plan.goingBack(), 1) << "a mail that did not leave has nothing to take back";
    // The marks of a mail change no time: those of the letter go back all the same.
    practice.takeBack(letters.number());
    practice.takeBack(mails.number());
    EXPECT_EQ(practice.rows(), old);
}

TEST(TakeBack, OfTwoPcsThatTakeARunBackTheSecondIsToldWhoDid) {
    Practice practice(2);
    const QStringList old = practice.rows();
    const qint32 renewal = practice.renew(practice.database.db);
    cT_ADODB there;
    there.iInit(practice.database.connectionString());
    TakeBack second(there, office);
    const Result<TakeBackProposal> seen = second.propose(renewal);
    ASSERT_TRUE(seen) << seen.reason().toStdString();
    const qint32 taker = practice.takeBack(renewal);
    const Result<bool> taken = second.take(*seen);
    EXPECT_TRUE(taken && !*taken) << taken.reason().toStdString();
    EXPECT_EQ(practice.rows(), old);
    const QString refusal = takeBackRefusal(*second.propose(renewal), someDay);
    EXPECT_TRUE(refusal.contains(u"は、すでに取り消されています（処理番号%1、"_s.arg(taker)) &&
                refusal.contains(practice.database.db.csGetComputerName()))
        << refusal.toStdString();
    EXPECT_EQ(readBatches(there, office, {1900, 1, 1}, {9000, 1, 1})->size(), 2u)
        << "a run that did nothing is none";
}

TEST(TakeBack, WhatASiblingProgramWritesAtTheLastMomentIsNotLost) {
    Practice practice(2);
    const qint32 renewal = practice.renew(practice.database.db);
    const QStringList renewed = practice.rows();
    cT_ADODB db([](const QString &text) {
        std::unique_ptr<DbProvider> real = makeProvider(text);
        DbProvider *const at = real.get();
        return std::make_unique<WrappedProvider>(std::move(real), [at](const QString &sql) {
            return !sql.startsWith(u"DELETE FROM RIYOUSHA_DOUI_REC"_s) ||
                   at->execute(u"UPDATE RIYOUSHA_DOUI_REC SET tUpDateTime = '2099/06/01 10:50:00'"
                               " WHERE nDate = 20260520"_s,
                               nullptr);
        });
    });
    db.iInit(practice.database.connectionString());
    TakeBack work(db, office);
    const Result<TakeBackProposal> proposal = work.propose(renewal);
    ASSERT_TRUE(proposal) << proposal.reason().toStdString();
    const Result<bool> taken = work.take(*proposal);
    EXPECT_TRUE(taken.reason().contains(u"他のプログラムに変更されました"_s)) << taken.reason().toStdString();
    EXPECT_EQ(practice.rows(), renewed);
}

TEST(TakeBack, RecordsThatAreOfNoUseKeepTheirRowsFromGoingBack) {
    const QString update = u"UPDATE DOUISHO_LOG SET "_s;
    const QString made = u" WHERE nIDNo = 1 AND iKind = 1"_s;
    for (const QString &fault :
         {update + u"cChanges = 'x'"_s + made, update + u"cChanges = '{\"iGetFlg\":[1,0]}'"_s + made,
          update + u"cChanges = '{\"x; DROP TABLE RIYOUSHA\":[\"1\",\"0\"]}'"_s + made,
          update + u"cKey = '20260520'"_s + made, update + u"iKind = 7"_s + made,
          update + u"cTable = 'RIYOUSHA'"_s + made}) {
        Practice practice(2);
        const QStringList two = practice.rowsOf(2);
        const qint32 renewal = practice.renew(practice.database.db);
        practice.database.run(fault);
        const TakeBackProposal proposal = practice.propose(renewal);
        EXPECT_GE(proposal.plan.left().size(), 1u) << fault.toStdString();
        practice.takeBack(renewal);
        EXPECT_EQ(practice.rowsOf(2), two) << fault.toStdString();
        EXPECT_EQ(practice.database.value(u"SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC WHERE nDate = 20260520"_s),
                  u"1"_s)
            << fault.toStdString();
    }
    // Runs that take each other back, as nobody but a hand can write them.
    Practice practice(1);
    const qint32 renewal = practice.renew(practice.database.db);
    practice.database.run(u"UPDATE DOUISHO_LOG_BATCH SET nTakesBack = nBatch"_s);
    EXPECT_EQ(practice.propose(renewal).plan.goingBack(), 1);
}

TEST(TakeBack, WithoutAHistoryThereIsNothingToTakeBack) {
    Practice practice(1);
    const qint32 renewal = practice.renew(practice.database.db);
    practice.database.run(u"UPDATE DOUISHO_LOG_INFO SET iVersion = 99"_s);
    practice.database.db.iDisConnect();
    const Result<TakeBackProposal> newer = TakeBack(practice.database.db, office).propose(renewal);
    EXPECT_FALSE(newer);
    EXPECT_TRUE(newer.reason().contains(u"新しい版"_s)) << newer.reason().toStdString();
    practice.database.run(
        u"DROP TABLE DOUISHO_LOG_INFO; DROP TABLE DOUISHO_LOG; DROP TABLE DOUISHO_LOG_BATCH;"
        "DROP TABLE DOUISHO_LOG_DOCUMENT"_s);
    practice.database.db.iDisConnect();
    EXPECT_EQ(TakeBack(practice.database.db, office).propose(renewal).reason(),
              u"処理番号%1 は、この事業所の処理にありません。"_s.arg(renewal));
}
