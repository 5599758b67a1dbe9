#pragma once

#include "print/mail/mail_settings.h"

#include <QByteArray>
#include <QString>
#include <functional>

/// What became of one mail.
struct SendOutcome {
    enum Kind {
        Accepted,  ///< the server has taken it
        Failed,    ///< it has not
        NoServer,  ///< it cannot be reached or refuses the log-in: the next mail would fare no better
        Uncertain, ///< all of it went out, but no answer came: it may have arrived
        Stopped    ///< the user stopped before any of it went out
    };
    Kind kind = Failed;
    QString reason; ///< for the user, names the server; empty when accepted
};

/// Hands one message to the server and waits for its answer. Certificates are checked. The line is used by
/// this mail only, so that one mail's trouble is never the next one's.
/// @param from,to addresses as wireAddress() gives them
/// @param message lines that end in CR LF
/// @param goOn called on the calling thread some fifty times a second, to paint; false asks to stop, which
/// happens while that is safe
SendOutcome sendMail(const MailServer &server, const QByteArray &from, const QByteArray &to,
                     const QByteArray &message, const std::function<bool()> &goOn);
