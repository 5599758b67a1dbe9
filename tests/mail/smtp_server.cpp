#include "tests/mail/smtp_server.h"

#include "app/base/ini_file.h"

#include <QFile>
#include <QJsonDocument>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

SmtpServer::SmtpServer(const QString &options) {
    const QStringList fixed = {QStringLiteral(DOUISHO_SMTP_SERVER), u"--out"_s,
                               m_folder.filePath(u"mails"_s)};
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(u"/usr/bin/python3"_s, fixed + options.split(u' ', Qt::SkipEmptyParts));
    while (m_process.waitForReadyRead(10000) && !m_process.canReadLine()) {
    }
    m_port = m_process.readLine().trimmed().toInt();
    EXPECT_GT(m_port, 0) << "python3-aiosmtpd is not there";
}

SmtpServer::~SmtpServer() {
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(5000))
        m_process.kill();
    m_process.waitForFinished();
}

QList<QJsonObject> SmtpServer::mails() const {
    QList<QJsonObject> mails;
    QFile file(m_folder.filePath(u"mails"_s));
    if (file.open(QIODevice::ReadOnly))
        while (!file.atEnd())
            mails.append(QJsonDocument::fromJson(file.readLine()).object());
    return mails;
}

void writeMailIni(const QString &folder, int port, const QStringList &lines) {
    const QString path = folder + u"/mail.ini"_s;
    QFile::remove(path);
    clsOplIniFile ini;
    ini.iInit(path);
    const QStringList usual = {u"メールサーバ=localhost"_s, u"ポート=%1"_s.arg(port),
                               u"タイムアウト=5"_s,         u"送信元名=ひなた"_s,
                               u"メール件名=件名"_s,        u"送信元メールアドレス=d@example.jp"_s};
    for (const QString &line : usual + lines)
        EXPECT_EQ(ini.iWriteProfileString(u"MAIL"_s, line.section(u'=', 0, 0), line.section(u'=', 1)), 0);
}
