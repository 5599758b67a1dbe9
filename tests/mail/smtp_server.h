#pragma once

#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QTemporaryDir>

/// A real mail server on loopback; it ends with the object.
class SmtpServer {
public:
    /// @param options of smtp_server.py, parted by blanks
    explicit SmtpServer(const QString &options = {});
    ~SmtpServer();

    int port() const { return m_port; }
    QString certificate() const { return m_folder.filePath(QStringLiteral("mails.pem")); }
    /// The mails that it has accepted, as a reader of mail decodes them.
    QList<QJsonObject> mails() const;

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    int m_port = 0;
};

/// Writes a mail.ini for a server on this machine, with these lines more; the last of a key counts.
void writeMailIni(const QString &folder, int port, const QStringList &lines = {});
