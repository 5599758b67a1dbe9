#pragma once

#include "print/mail/mail_settings.h"

#include <QByteArray>
#include <QString>

/// One answer of a mail server: a code and what it says.
struct SmtpReply {
    int code = 0; ///< 0: none
    QString text; ///< code and words, on one line

    bool refuses() const { return code >= 400 && code <= 599; }
    bool wantsLogin() const;
};

/// Reads the last line of an answer.
SmtpReply smtpReply(const QByteArray &line);

/// Why a mail failed, as sentences for the user that name the server and say what to look at.
/// @param code the mail library's result
/// @param reply the last answer of the server
QString whySmtpFailed(const MailServer &server, int code, const SmtpReply &reply);
