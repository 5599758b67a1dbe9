// A real mail server that does what servers do: log-ins, certificates, and trouble.

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "print/mail/email.h"
#include "tests/mail/smtp_server.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class MailSendTest : public testing::Test {
protected:
    MailSendTest() { QDir::setCurrent(folder.path()); }
    ~MailSendTest() override { QDir::setCurrent(QDir::rootPath()); }

    Result<MailSettings> settings(int port, const QStringList &lines) {
        writeMailIni(folder.path(), port, lines);
        return readMailSettings(Folders(folder.path()));
    }
    SendOutcome send(
        int port, const QStringList &lines, const std::function<bool()> &goOn = [] { return true; }) {
        const auto read = settings(port, lines);
        EXPECT_TRUE(read) << read.reason().toStdString();
        mEmail mail(read ? *read : MailSettings{}, clock);
        const short status = mail.nSendMail({u"佐藤"_s, u"to@example.jp"_s}, u"（1）"_s, u"以上"_s, goOn);
        EXPECT_EQ(status == 1, mail.outcome().kind == SendOutcome::Accepted);
        EXPECT_EQ(mail.logTrouble(), u""_s);
        return mail.outcome();
    }
    QString log() const {
        QFile file(folder.filePath(u"MailSend.log"_s));
        return file.open(QIODevice::ReadOnly) ? decode932(file.readAll()) : QString();
    }

    QTemporaryDir folder;
    FixedClock clock{QDate(2026, 11, 21)};
};

} // namespace

TEST_F(MailSendTest, ServersAndFaults) {
    using enum SendOutcome::Kind;
    struct Case {
        QString server;
        QStringList settings; ///< CERT stands for the server's certificate
        SendOutcome::Kind outcome;
        QString said = {}; ///< part of the reason
    };
    const QString cert = u"認証局ファイル=CERT"_s, ours = u"ログイン=doui:sec:ret"_s;
    const QString open = u"暗号化=なし"_s, tls = u"暗号化=tls"_s, unknown = u"証明書を確認できません"_s;
    const Case cases[] = {
        {u""_s, {}, Accepted},
        {u""_s, {u"ポート=1"_s}, NoServer, u"localhost:1）に接続できません"_s},
        {u""_s, {u"メールサーバ=no-such-host.invalid"_s}, NoServer, u"no-such-host.invalid"_s},
        {u"--fault silent"_s, {u"タイムアウト=1"_s}, NoServer, u"1 秒以内に応答がありません"_s},
        {u"--fault slow-data"_s, {u"タイムアウト=1"_s}, Uncertain, u"届いている可能性"_s},
        {u"--fault drop-data"_s, {}, Uncertain, u"届いている可能性"_s},
        {u"--fault busy"_s, {}, Failed, u"451 4.3.0 try again later"_s},
        {u"--reject to@example.jp"_s, {}, Failed, u"550 5.1.1 no such user here"_s},
        {u"--login doui:sec:ret"_s, {ours, open}, Accepted},
        {u"--login doui:sec:ret"_s, {}, NoServer, u"ログインできません"_s},
        {u"--login doui:sec:ret"_s, {u"ログイン=doui sec:rets"_s, open}, NoServer, u"ログインできません"_s},
        {u"--login doui:sec:ret"_s, {ours}, NoServer, u"STARTTLS"_s}, // never over an open line
        {u"--login doui:sec:ret --tls starttls"_s, {ours, cert}, Accepted},
        {u"--tls starttls"_s, {cert}, Accepted},
        {u"--tls starttls"_s, {}, NoServer, unknown},
        {u"--tls tls"_s, {tls, cert}, Accepted},
        {u"--tls tls --name other.example.jp"_s, {tls, cert}, NoServer, unknown},
        {u""_s, {tls}, NoServer, u"暗号化"_s},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE((c.server + u" | "_s + c.settings.join(u' ')).toStdString());
        const SmtpServer server(c.server);
        QStringList lines = c.settings;
        lines.replaceInStrings(u"CERT"_s, server.certificate());
        QElapsedTimer time;
        time.start();
        int breaths = 0;
        const SendOutcome outcome = send(server.port(), lines, [&] { return ++breaths > 0; });
        EXPECT_EQ(outcome.kind, c.outcome) << outcome.reason.toStdString();
        EXPECT_TRUE(outcome.reason.contains(c.said)) << outcome.reason.toStdString();
        EXPECT_LT(time.elapsed(), 5000);
        EXPECT_GE(breaths, time.elapsed() < 1000 ? 0 : 10) << "windows keep painting";
        ASSERT_EQ(server.mails().size(), c.outcome == Accepted ? 1 : 0);
        if (c.outcome == Accepted) {
            EXPECT_EQ(server.mails()[0][u"tls"].toBool(), c.server.contains(u"tls"_s));
            EXPECT_EQ(server.mails()[0][u"login"].toString(),
                      c.server.contains(u"doui"_s) ? u"doui"_s : u""_s);
        }
    }
    EXPECT_FALSE(log().contains(u"sec:ret"_s));
}

TEST_F(MailSendTest, StopsWhileThatIsSafe) {
    const SmtpServer server(u"--fault silent"_s);
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(send(server.port(), {u"タイムアウト=60"_s}, [] { return false; }).kind, SendOutcome::Stopped);
    EXPECT_LT(time.elapsed(), 4000);

    const SmtpServer slow(u"--fault slow-data"_s);
    int paintedAfterStop = 0;
    time.start();
    const SendOutcome outcome = send(slow.port(), {u"タイムアウト=1"_s}, [&] {
        const bool handedOver = time.elapsed() > 500;
        paintedAfterStop += handedOver;
        return !handedOver;
    });
    EXPECT_EQ(outcome.kind, SendOutcome::Uncertain) << outcome.reason.toStdString();
    EXPECT_GT(paintedAfterStop, 5);
}

TEST_F(MailSendTest, LogTellsEachMailAndHidesThePassword) {
    QString reason = send(1, {u"ログイン=user:localhost"_s}).reason;
    const SmtpServer server;
    send(server.port(), {});
    EXPECT_EQ(log(),
              u"2026/11/21 09:00:00 送信エラー ■Server：localhost:1:5 ■From：ひなた<d@example.jp>\tuser:****"
              " ■To：to@example.jp ■Error-msg:"_s +
                  reason.replace(u"localhost"_s, u"****"_s) +
                  u"\r\n2026/11/21 09:00:00 送信完了 ■Server：localhost:%1:5 ■From：ひなた<d@example.jp>\t"
                  " ■To：to@example.jp\r\n"_s.arg(server.port()));
}

TEST_F(MailSendTest, WrongSettingsNameTheKeyAndPortsChooseTheProtection) {
    for (const QString &line : {u"メールサーバ="_s, u"メールサーバ=a/b"_s, u"ポート=70000"_s,
                                u"ポート=２５x"_s, u"タイムアウト=0"_s, u"ログイン=user"_s, u"暗号化=SSH"_s,
                                u"認証局ファイル=none.pem"_s, u"送信元メールアドレス=治療院"_s}) {
        const QString reason = settings(25, {line}).reason();
        EXPECT_TRUE(reason.contains(u"mail.ini"_s) && reason.contains(line.section(u'=', 0, 0)))
            << reason.toStdString();
    }
    using enum MailSecurity;
    for (const auto &[port, expected] : {std::pair{25, Offered}, {465, Tls}, {587, StartTls}})
        EXPECT_EQ(settings(port, {})->server.security, expected) << port;
    QFile::remove(folder.filePath(u"mail.ini"_s));
    EXPECT_TRUE(readMailSettings(Folders(folder.path())).reason().contains(u"mail.ini"_s));
}
