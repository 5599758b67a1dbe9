#pragma once

#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QTemporaryDir>

/// A real mail server on loopback; it ends with the object. Its certificate is for "localhost" unless another
/// name is asked for.
class SmtpServer {
public:
    /// @param options of smtp_server.py
    explicit SmtpServer(const QStringList &options = {}, const QString &certificateName = {});
    ~SmtpServer();

    int port() const { return m_port; }
    QString certificate() const { return m_folder.filePath(QStringLiteral("certificate.pem")); }
    /// The mails that it has accepted, as a reader of mail decodes them.
    QList<QJsonObject> mails() const;

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    int m_port = 0;
};
