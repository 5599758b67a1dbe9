// A real mail server that does what servers do: log-ins, certificates, and trouble.

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "print/mail/email.h"
#include "tests/mail/smtp_server.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A program folder with a mail.ini.
class MailSendTest : public testing::Test {
protected:
    MailSendTest() { QDir::setCurrent(folder.path()); }
    ~MailSendTest() override { QDir::setCurrent(QDir::rootPath()); }

    void write(const QStringList &lines) {
        QFile file(folder.filePath(u"mail.ini"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[MAIL]\r\n");
        clsOplIniFile ini;
        ini.iInit(file.fileName());
        file.close();
        const QStringList sender = {u"送信元名=ひなた訪問治療院"_s, u"送信元メールアドレス=doui@example.jp"_s,
                                    u"メール件名=同意書のお知らせ"_s};
        for (const QString &line : sender + lines)
            ASSERT_EQ(ini.iWriteProfileString(u"MAIL"_s, line.section(u'=', 0, 0), line.section(u'=', 1)), 0);
    }
    /// Sends one mail by the settings in mail.ini.
    SendOutcome send(const std::function<bool()> &goOn = [] { return true; }) {
        QString reason;
        const auto settings = readMailSettings(Folders(folder.path()), &reason);
        EXPECT_TRUE(settings) << reason.toStdString();
        if (!settings)
            return {};
        mEmail mail(*settings, clock);
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
        const char *what;
        QStringList server;
        QStringList settings; ///< PORT and CERT stand for the server's
        SendOutcome::Kind outcome;
        QString said; ///< part of the reason
        QString certificateName = {};
    };
    const QStringList login = {u"--login"_s, u"doui:se cret:1"_s};
    const QStringList tls = {u"--tls"_s, u"tls"_s}, startTls = {u"--tls"_s, u"starttls"_s};
    const QString cert = u"認証局ファイル=CERT"_s, ours = u"ログイン=doui:se cret:1"_s;
    const Case cases[] = {
        {"plain", {}, {}, Accepted, {}},
        {"nobody listens", {}, {u"ポート=1"_s}, NoServer, u"localhost:1）に接続できません"_s},
        {"no such server", {}, {u"メールサーバ=no-such-host.invalid"_s}, NoServer, u"no-such-host.invalid"_s},
        {"silent", {u"--fault"_s, u"silent"_s}, {}, NoServer, u"1 秒以内に応答がありません"_s},
        {"hangs after DATA", {u"--fault"_s, u"slow-data"_s}, {}, Uncertain, u"届いている可能性"_s},
        {"line cut after DATA", {u"--fault"_s, u"drop-data"_s}, {}, Uncertain, u"届いている可能性"_s},
        {"busy", {u"--fault"_s, u"busy"_s}, {}, Failed, u"451 4.3.0 try again later"_s},
        {"recipient refused",
         {u"--reject"_s, u"to@example.jp"_s},
         {},
         Failed,
         u"550 5.1.1 no such user here"_s},
        {"log-in", login, {ours, u"暗号化=なし"_s}, Accepted, {}},
        {"log-in missing", login, {}, NoServer, u"ログインできません"_s},
        {"log-in wrong",
         login,
         {u"ログイン=doui se cret:2"_s, u"暗号化=なし"_s},
         NoServer,
         u"ログインできません"_s},
        {"log-in never in the open", login, {ours}, NoServer, u"STARTTLS"_s},
        {"STARTTLS with log-in", login + startTls, {ours, cert}, Accepted, {}},
        {"STARTTLS offered", startTls, {cert}, Accepted, {}},
        {"STARTTLS offered, certificate unknown", startTls, {}, NoServer, u"証明書を確認できません"_s},
        {"TLS", tls, {u"暗号化=TLS"_s, cert}, Accepted, {}},
        {"TLS, certificate of another",
         tls,
         {u"暗号化=tls"_s, cert},
         NoServer,
         u"証明書を確認できません"_s,
         u"other.example.jp"_s},
        {"TLS with a plain server", {}, {u"暗号化=TLS"_s}, NoServer, u"暗号化"_s},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const SmtpServer server(c.server, c.certificateName);
        QStringList lines = {u"メールサーバ=localhost"_s, u"ポート=%1"_s.arg(server.port()),
                             u"タイムアウト=1"_s};
        for (const QString &line : c.settings)
            lines.append(QString(line).replace(u"CERT"_s, server.certificate()));
        write(lines);
        QElapsedTimer time;
        time.start();
        int breaths = 0;
        const SendOutcome outcome = send([&] { return ++breaths > 0; });
        EXPECT_EQ(outcome.kind, c.outcome) << outcome.reason.toStdString();
        EXPECT_TRUE(outcome.reason.contains(c.said)) << outcome.reason.toStdString();
        EXPECT_EQ(outcome.reason.isEmpty(), c.outcome == Accepted);
        EXPECT_EQ(server.mails().size(), c.outcome == Accepted ? 1 : 0);
        EXPECT_LT(time.elapsed(), 5000);
        EXPECT_GE(breaths, time.elapsed() / 60) << "windows keep painting";
        if (c.outcome == Accepted) {
            EXPECT_EQ(server.mails()[0][u"tls"].toBool(), c.server.contains(u"--tls"_s));
            EXPECT_EQ(server.mails()[0][u"login"].toString(),
                      c.server.contains(u"--login"_s) ? u"doui"_s : u""_s);
        }
    }
    EXPECT_FALSE(log().contains(u"se cret"_s));
}

TEST_F(MailSendTest, StopsWhileThatIsSafe) {
    const SmtpServer server({u"--fault"_s, u"silent"_s});
    write({u"メールサーバ=localhost"_s, u"ポート=%1"_s.arg(server.port()), u"タイムアウト=60"_s});
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(send([] { return false; }).kind, SendOutcome::Stopped);
    EXPECT_LT(time.elapsed(), 4000);
}

TEST_F(MailSendTest, LogTellsEachMailAndHidesThePassword) {
    write({u"メールサーバ=localhost"_s, u"ポート=1"_s, u"タイムアウト=7"_s, u"ログイン=user:localhost"_s});
    const QString reason = send().reason;
    const SmtpServer server;
    write({u"メールサーバ=localhost"_s, u"ポート=%1"_s.arg(server.port()), u"タイムアウト=7"_s});
    send();
    const QString start = u"2026/11/21 09:00:00 送信エラー ■Server：localhost:1:7 ■From：ひなた訪問治療院"
                          "<doui@example.jp>\tuser:**** ■To：to@example.jp ■Error-msg:"_s;
    EXPECT_EQ(log(), start + QString(reason).replace(u"localhost"_s, u"****"_s) +
                         u"\r\n2026/11/21 09:00:00 送信完了 ■Server：localhost:%1:7 ■From：ひなた訪問治療院"
                         "<doui@example.jp>\t ■To：to@example.jp\r\n"_s.arg(server.port()));
}

TEST_F(MailSendTest, WrongSettingsNameTheKey) {
    for (const auto &[line, key] : {std::pair{u"メールサーバ="_s, u"メールサーバ"_s},
                                    {u"メールサーバ=a/b"_s, u"メールサーバ"_s},
                                    {u"ポート=70000"_s, u"ポート"_s},
                                    {u"ポート=２５x"_s, u"ポート"_s},
                                    {u"タイムアウト=0"_s, u"タイムアウト"_s},
                                    {u"ログイン=user"_s, u"ログイン"_s},
                                    {u"暗号化=SSH"_s, u"暗号化"_s},
                                    {u"認証局ファイル=none.pem"_s, u"認証局ファイル"_s},
                                    {u"送信元メールアドレス=治療院"_s, u"送信元メールアドレス"_s}}) {
        write({u"メールサーバ=localhost"_s, line});
        QString reason;
        EXPECT_FALSE(readMailSettings(Folders(folder.path()), &reason)) << line.toStdString();
        EXPECT_TRUE(reason.contains(u"mail.ini"_s) && reason.contains(key)) << reason.toStdString();
    }
    QFile::remove(folder.filePath(u"mail.ini"_s));
    QString reason;
    EXPECT_FALSE(readMailSettings(Folders(folder.path()), &reason));
    EXPECT_TRUE(reason.contains(u"mail.ini"_s)) << reason.toStdString();
}

TEST_F(MailSendTest, PortsChooseTheProtection) {
    using enum MailSecurity;
    for (const auto &[port, login, expected] : {std::tuple{u"25"_s, u""_s, Offered},
                                                {u"465"_s, u""_s, Tls},
                                                {u"587"_s, u""_s, StartTls},
                                                {u"2525"_s, u"a:b"_s, StartTls},
                                                {u""_s, u""_s, Offered}}) {
        write({u"メールサーバ=localhost"_s, u"ポート="_s + port, u"ログイン="_s + login});
        QString reason;
        const auto settings = readMailSettings(Folders(folder.path()), &reason);
        ASSERT_TRUE(settings) << reason.toStdString();
        EXPECT_EQ(settings->server.security, expected) << port.toStdString();
    }
}
