// What a reader of mail makes of the messages: every mail goes through a real server and is decoded there.

#include "print/mail/mail_address.h"
#include "print/mail/mail_message.h"
#include "print/mail/mail_send.h"
#include "tests/mail/smtp_server.h"
#include "tests/support/test_environment.h"

#include <QTimeZone>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(MailMessage, OddNamesArriveAsTheyAreAndAddNoHeader) {
    struct Case {
        QString text;
        QString charset;
        QString arrives; ///< empty: as it is
    };
    const QString long200 = u"相談員の長い名前"_s.repeated(25);
    const Case cases[] = {
        {u"Sato Hanako"_s, u"us-ascii"_s, {}},
        {u"佐藤　花子"_s, u"iso-2022-jp"_s, {}},
        {u"凜 熙 堯 ー 〓 Ａ１"_s, u"iso-2022-jp"_s, {}},
        {u"髙橋"_s, u"utf-8"_s, {}},
        {u"𠮷田 😀"_s, u"utf-8"_s, {}},
        {u"ﾔﾏﾀﾞ ㈱ ①"_s, u"utf-8"_s, {}},
        {u"10時～12時 －5 ∥ ￠"_s, u"utf-8"_s, {}},
        {u"か\u3099 神\uFE00 ¥"_s, u"utf-8"_s, {}},
        {u"\"O'Brien\\\" (x) <a@b.jp>, y;:"_s, u"us-ascii"_s, {}},
        {u"=?UTF-8?B?WA==?="_s, u"us-ascii"_s, {}},
        {u"x\r\nBcc: evil@example.jp\r\n\r\nbody"_s, u"us-ascii"_s, u"x  Bcc: evil@example.jp    body"_s},
        {u"山田\nTo: b@example.jp\u2028太郎"_s, u"iso-2022-jp"_s, u"山田 To: b@example.jp 太郎"_s},
        {u"a\rb\x85\x1B$B7r"_s, u"us-ascii"_s, u"a b  $B7r"_s},
        {u"half \xD842 pair"_s, u"utf-8"_s, u"half \uFFFD pair"_s},
        {long200, u"iso-2022-jp"_s, {}},
        {u"髙"_s + long200, u"utf-8"_s, {}},
        {u"A"_s.repeated(500), u"us-ascii"_s, {}},
    };
    SmtpServer server;
    MailServer to{u"127.0.0.1"_s, server.port(), 10, MailSecurity::None, {}, {}, {}};
    qsizetype sent = 0;
    for (const Case &c : cases) {
        SCOPED_TRACE(c.text.toStdString());
        MailMessage message{{c.text, u"from@example.jp"_s}, {c.text, u"to@example.jp"_s}, c.text, {}, {}, {}};
        message.body = u".\r\n..dots\r\n"_s + c.text;
        message.date = QDateTime(QDate(2026, 11, 21), QTime(9, 5), QTimeZone(9 * 3600));
        message.id = QUuid::createUuid();
        const SendOutcome outcome =
            sendMail(to, "from@example.jp", "to@example.jp", mailBytes(message), [] { return true; });
        ASSERT_EQ(outcome.kind, SendOutcome::Accepted) << outcome.reason.toStdString();
        const QList<QJsonObject> mails = server.mails();
        ASSERT_EQ(mails.size(), ++sent);
        const QJsonObject &mail = mails.back();
        const QString arrives = c.arrives.isEmpty() ? c.text : c.arrives;
        EXPECT_EQ(mail[u"subject"].toString(), arrives);
        EXPECT_EQ(mail[u"fromName"].toString(), arrives);
        EXPECT_EQ(mail[u"toAddress"].toString(), u"to@example.jp"_s);
        EXPECT_EQ(mail[u"headers"].toVariant().toStringList(),
                  QStringList({u"From"_s, u"To"_s, u"Subject"_s, u"Date"_s, u"Message-ID"_s,
                               u"MIME-Version"_s, u"Content-Type"_s, u"Content-Transfer-Encoding"_s}));
        EXPECT_EQ(mail[u"recipients"].toVariant().toStringList(), QStringList(u"to@example.jp"_s));
        EXPECT_EQ(mail[u"defects"].toVariant().toStringList(), QStringList());
        EXPECT_EQ(mail[u"charset"].toString(), c.charset);
        EXPECT_TRUE(mail[u"body"].toString().startsWith(u".\r\n..dots\r\n"_s)) << "dots are kept";
        if (c.arrives.isEmpty()) {
            EXPECT_EQ(mail[u"body"].toString().split(u"\r\n"_s)[2], c.text);
        }
        EXPECT_EQ(mail[u"date"].toString(), u"2026-11-21T09:05:00+09:00"_s);
        EXPECT_LE(mail[u"longestHeader"].toInt(), 78);
        EXPECT_LE(mail[u"longestLine"].toInt(), 998);
        EXPECT_EQ(mail[u"loneBreaks"].toInt(), 0);
    }
}

TEST(MailMessage, ALineTooLongForMailIsWrapped) {
    MailMessage message{{{}, u"a@example.jp"_s}, {{}, u"b@example.jp"_s}, {}, u"字"_s.repeated(600), {}, {}};
    for (const QByteArray &line : mailBytes(message).split('\n'))
        EXPECT_LE(line.size(), 999);
    EXPECT_TRUE(mailBytes(message).contains("base64"));
    message.to.address = u"b@example.jp\r\nBcc: c@example.jp"_s;
    EXPECT_EQ(mailBytes(message), QByteArray());
}

TEST(MailAddress, WhatServersTakeIsToldFromWhatTheyDoNot) {
    for (const QString &good :
         {u"a@example.jp"_s, u" soudan.1+x@care-office.example.co.jp　"_s, u"o'neil@x.jp"_s})
        EXPECT_EQ(wireAddress(good), good.trimmed().toLatin1()) << whyNoAddress(good).toStdString();
    EXPECT_EQ(wireAddress(u"taro..x.@docomo.example"_s), QByteArray("\"taro..x.\"@docomo.example"));
    for (const QString &bad :
         {u""_s, u"　"_s, u"a"_s, u"@x.jp"_s, u"a@"_s, u"a@x"_s, u"a@x..jp"_s, u"a@-x.jp"_s, u"a b@x.jp"_s,
          u"a@x.jp,b@x.jp"_s, u"a@b@x.jp"_s, u"<a@x.jp>"_s, u"a@x.jp\r\nRCPT TO:<b@x.jp>"_s,
          u"a@x.jp\n"_s + u"b"_s, u"\"a b\"@x.jp"_s, u"a@1.2.3.4"_s, u"a"_s.repeated(65) + u"@x.jp"_s,
          u"a@"_s + u"x."_s.repeated(130) + u"jp"_s}) {
        EXPECT_NE(whyNoAddress(bad), u""_s) << bad.toStdString();
        EXPECT_EQ(wireAddress(bad), QByteArray()) << bad.toStdString();
    }
    for (const QString &wide : {u"相談@x.jp"_s, u"a@日本.jp"_s, u"ａ@x.jp"_s})
        EXPECT_TRUE(whyNoAddress(wide).contains(u"全角"_s));
}
