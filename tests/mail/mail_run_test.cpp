// Who gets which mail, and which rows are marked.

#include "archive/sent_documents.h"
#include "consent/screens/mail_claims.h"
#include "print/mail/mail_choice.h"
#include "tests/mail/smtp_server.h"
#include "tests/support/failing_provider.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Watches nothing; stops before a mail when it is told to.
struct Watch : MailWatch {
    void begins(size_t recipient) override { begun = recipient; }
    void ended(size_t, const MailResult &result) override { lines.append(result.reason); }
    bool goOn() override { return begun < stopAt; }
    size_t begun = 0, stopAt = 99;
    QStringList lines;
};

/// Counsellors of two branches and a row for each of their patients.
class MailRunTest : public testing::Test {
protected:
    MailRunTest() {
        QDir::setCurrent(database.folder());
        database.run(
            u"INSERT INTO SOUDAN (iKyotenCd, iKyotenEb, nIDNo, cName, cMail1, iChusiFlg) VALUES"
            " (1, 1, 1, '佐藤', 'a@example.jp', 0), (2, 1, 1, '神戸', 'c@example.jp', 0),"
            " (1, 1, 2, '鈴木', 'refused@example.jp', 0), (1, 1, 3, '中止', 'd@example.jp', 1),"
            " (1, 1, 4, '無し', NULL, 0), (1, 1, 5, '暇', 'f@example.jp', 0);"
            "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iSoudaninId) VALUES (1, 1, 1, 1),"
            " (1, 1, 2, 1), (1, 1, 3, 2), (1, 1, 4, 3), (1, 1, 5, 0), (1, 1, 6, 4), (2, 1, 1, 1);"
            "INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg,"
            " nHenkeiDouiDate) SELECT iKyotenCd, 1, nIDNo, day, 0, 0 FROM RIYOUSHA_SUB,"
            " (SELECT 20260501 AS day UNION SELECT 20260601) AS days"_s);
        for (const int patient : {1, 2, 3, 4, 5, 6})
            rows.push_back({{1, 1, patient}, u"患者%1"_s.arg(patient), 20260601});
        rows.push_back({{2, 1, 1}, u"分院"_s, 20260601});
        rows.push_back({rows[0].patient, rows[0].name, 20260501});
    }
    MailPlan plan() {
        return planMails(*readCounsellors(database.db), *readPatientCounsellors(database.db, rows), rows);
    }
    /// Mails everybody who can get one.
    std::vector<MailResult> run(cT_ADODB &db, const SmtpServer &server) {
        std::vector<MailRecipient> recipients;
        for (const MailRecipient &recipient : plan().recipients)
            if (recipient.hindrance.isEmpty())
                recipients.push_back(recipient);
        MailSettings settings;
        settings.server = {u"localhost"_s, server.port(), 5, MailSecurity::None, {}, {}, {}};
        settings.senderAddress = u"doui@example.jp"_s;
        settings.subject = u"お知らせ"_s;
        mEmail mail(settings, clock);
        RecordMailClaims claims(practice.environment, db);
        return runMails(claims, mail, recipients, clock.today(), watch);
    }
    QStringList marked() const {
        return database.rows(u"SELECT iKyotenCd || '-' || nIDNo || ' ' || nDate FROM RIYOUSHA_DOUI_REC"
                             " WHERE iSendFlg = 1 ORDER BY iKyotenCd, nIDNo, nDate"_s);
    }

    TestInstallation practice;
    TestDatabase database;
    FixedClock clock{QDate(2026, 11, 21)};
    std::vector<MailRow> rows;
    Watch watch;
};

using enum MailResult::Kind;

std::vector<MailResult::Kind> kinds(const std::vector<MailResult> &results) {
    std::vector<MailResult::Kind> found;
    std::ranges::transform(results, std::back_inserter(found), &MailResult::kind);
    return found;
}

} // namespace

TEST_F(MailRunTest, PatientsGoToTheCounsellorOfTheirOwnBranch) {
    const MailPlan found = plan();
    QStringList lines;
    for (const MailRecipient &recipient : found.recipients)
        lines.append(
            u"%1 %2 %3"_s.arg(recipient.counsellor.cName).arg(recipient.patients()).arg(recipient.hindrance));
    EXPECT_EQ(lines, QStringList({u"佐藤 2 "_s, u"神戸 1 "_s, u"鈴木 1 "_s,
                                  u"無し 1 メールアドレスが登録されていません。"_s,
                                  u"暇 0 対象の利用者はいません。"_s}));
    EXPECT_EQ(found.unreached, QStringList({u"4 患者4"_s, u"5 患者5"_s}));
}

TEST_F(MailRunTest, OnlyRowsOfAcceptedMailsAreMarked) {
    const SmtpServer server(u"--reject refused@example.jp"_s);
    rows[1].name = u"山田\r\n偽さん [ID：9]"_s;
    EXPECT_EQ(kinds(run(database.db, server)), std::vector({Sent, Sent, Failed}));
    EXPECT_EQ(marked(),
              QStringList({u"1-1 20260501"_s, u"1-1 20260601"_s, u"1-2 20260601"_s, u"2-1 20260601"_s}));
    EXPECT_TRUE(watch.lines[2].contains(u"no such user here"_s));
    ASSERT_EQ(server.mails().size(), 2);
    EXPECT_EQ(server.mails()[0][u"subject"].toString(), u"お知らせ（2026/11/21）"_s);
    EXPECT_EQ(server.mails()[0][u"body"].toString(),
              u"下記ご利用者様の同意書が出来ました。\r\n＜ご利用者＞\r\n"
              "----------------------------------------------------------------------------\r\n"
              "患者1さん [ID：1]\r\n山田  偽さん [ID：9]さん [ID：2]\r\n以上\r\n"_s);
    EXPECT_EQ(database.rows(u"SELECT cKind, nRows, nDocuments FROM DOUISHO_LOG_BATCH"_s),
              QStringList{u"メール送信|4|2"_s});
    const std::vector<SentDocument> kept = *readSentDocuments(database.db, 1);
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_TRUE(readableMail(*keptContent(Archive(practice.folders), kept[0]))
                    .endsWith(server.mails()[0][u"body"].toString().remove(u'\r')));
}

TEST_F(MailRunTest, NothingLeavesUnclaimedAndAMarkThatStaysIsTold) {
    const SmtpServer server(u"--reject a@example.jp"_s);
    int kept = 0;
    qsizetype mails = 0;
    bool allDone = false;
    for (int statement = 1; !allDone; ++statement) {
        SCOPED_TRACE(statement);
        ASSERT_LT(statement, 40);
        FailingConnection failing(database.connectionString(), statement);
        const std::vector<MailResult> results = run(failing.db, server);
        const qsizetype sent = server.mails().size() - mails;
        mails += sent;
        const bool tried = results[0].kind == Failed;
        if (tried) { // its run could not be written down; at last, all went well for the first recipient
            allDone = kept > 0;
        } else if (results[0].kind == NotTried) {
            EXPECT_EQ(kinds(results), std::vector({NotTried, NotTried, NotTried}));
            EXPECT_EQ(marked(), QStringList());
        } else {
            EXPECT_EQ(kinds(results), std::vector({NotGivenBack, NotTried, NotTried}));
            EXPECT_FALSE(marked().isEmpty());
            ++kept;
        }
        if (!tried) {
            EXPECT_TRUE(results[0].reason.contains(FailingConnection::description));
            EXPECT_EQ(sent, 0);
        }
        database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iSendFlg = NULL"_s);
    }
}

TEST_F(MailRunTest, NobodyIsMailedOfRowsThatColleaguesTookAndStopsAreTold) {
    const SmtpServer server;
    rows[2].sent = true;
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 2;"
                 "UPDATE RIYOUSHA_DOUI_REC SET iSendFlg = 1 WHERE iKyotenCd = 2 OR nIDNo = 3"_s);
    std::vector<MailResult> results = run(database.db, server);
    EXPECT_EQ(kinds(results), std::vector({Overtaken, Overtaken, Sent})) << "the last was known to be told";
    EXPECT_TRUE(results[0].reason.endsWith(u"：2 患者2"_s)) << results[0].reason.toStdString();
    EXPECT_TRUE(results[1].reason.endsWith(u"：1 分院"_s)) << results[1].reason.toStdString();
    EXPECT_EQ(server.mails().size(), 1);
    EXPECT_EQ(mailSummary(results), u"送信先 3 件：送信済 1 件、未送信 2 件"_s);
    watch.stopAt = 1;
    results = run(database.db, server);
    EXPECT_EQ(kinds(results), std::vector({Overtaken, NotTried, NotTried}));
}

TEST_F(MailRunTest, WhatMayHaveArrivedIsNotMailedAgainUnlessTheUserKnows) {
    const SmtpServer silent(u"--fault drop-data"_s), server;
    MailChoice choice;
    choice.load({plan().recipients[0]});
    const std::vector<MailResult> results = run(database.db, silent);
    EXPECT_EQ(kinds(results), std::vector({Uncertain, Uncertain, Uncertain}));
    EXPECT_EQ(marked().size(), 5);
    EXPECT_TRUE(results[0].rowsChanged());
    EXPECT_EQ(kinds(run(database.db, server)), std::vector({Overtaken, Overtaken, Overtaken}));

    choice.takeResults(results);
    EXPECT_EQ(choice.ticked().size(), 0);
    choice.toggle(0);
    EXPECT_EQ(choice.tickedToldBefore(), 2) << "the question names them";
    rows = choice.ticked()[0].rows;
    EXPECT_EQ(kinds(run(database.db, server)), std::vector({Sent}));
}

TEST_F(MailRunTest, AServerThatIsOfNoUseIsTriedOnce) {
    const SmtpServer server(u"--login a:b"_s);
    EXPECT_EQ(kinds(run(database.db, server)), std::vector({Failed, NotTried, NotTried}));
}
