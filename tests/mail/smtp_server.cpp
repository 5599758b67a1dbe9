#include "tests/mail/smtp_server.h"

#include <QFile>
#include <QJsonDocument>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

SmtpServer::SmtpServer(const QStringList &options, const QString &certificateName) {
    QStringList arguments = {QStringLiteral(DOUISHO_SMTP_SERVER), u"--out"_s, m_folder.filePath(u"mails"_s)};
    if (options.contains(u"--tls"_s)) {
        const QString name = certificateName.isEmpty() ? u"localhost"_s : certificateName;
        QProcess maker;
        maker.start(u"openssl"_s,
                    {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                     u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-batch"_s, u"-days"_s, u"2"_s,
                     u"-subj"_s, u"/CN="_s + name, u"-addext"_s, u"subjectAltName=DNS:"_s + name,
                     u"-keyout"_s, m_folder.filePath(u"key.pem"_s), u"-out"_s, certificate()});
        maker.waitForFinished();
        QFile both(certificate()), key(m_folder.filePath(u"key.pem"_s));
        if (key.open(QIODevice::ReadOnly) && both.open(QIODevice::Append))
            both.write(key.readAll());
        arguments << u"--certificate"_s << certificate();
    }
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(u"/usr/bin/python3"_s, arguments + options);
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
