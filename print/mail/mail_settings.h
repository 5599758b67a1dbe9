#pragma once

#include "app/base/result.h"

#include <QString>
#include <optional>

class Folders;

/// How the line to the mail server is protected.
enum class MailSecurity {
    None,    ///< never; only when the settings say so
    Offered, ///< STARTTLS where the server offers it
    StartTls,
    Tls ///< from the first byte
};

/// The practice's mail server and how to log in there.
struct MailServer {
    QString host;
    int port = 25;
    int timeout = 30; ///< seconds that each answer of the server may take
    MailSecurity security = MailSecurity::Offered;
    QString user; ///< empty: no log-in
    QString password;
    QString authorities; ///< PEM file of the certificate authorities; empty: the system's

    /// "server:port:time-out", as the send log names it.
    QString argument() const;
};

/// mail.ini, section MAIL.
struct MailSettings {
    MailServer server;
    QString senderName;
    QString senderAddress;
    QString subject;

    /// Display name and address, a tab, then the log-in value with its password masked.
    QString senderArgument() const;
};

/// Reads mail.ini in the data folder. Without the key 暗号化 (なし, STARTTLS or TLS) port 465 means TLS and
/// 587 STARTTLS; a log-in is never sent over an open line unless the key says なし.
/// A failure names the file and the key.
Result<MailSettings> readMailSettings(const Folders &folders);
