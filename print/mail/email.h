#pragma once

#include "print/mail/mail_message.h"
#include "print/mail/mail_send.h"

class Clock;

/// Sends mails by the settings and writes down each in the send log, MailSend.log in the current folder. The
/// log-in's password never enters the log.
class mEmail {
public:
    /// The clock must outlive the object.
    mEmail(const MailSettings &settings, const Clock &clock) : m_settings(settings), m_clock(clock) {}

    const MailSettings &settings() const { return m_settings; }

    /// Sends one mail, its subject the configured one and `subjectEnd`. 1 when the server has accepted it, or
    /// 0: then outcome() says why.
    short nSendMail(const MailPerson &to, const QString &subjectEnd, const QString &body,
                    const std::function<bool()> &goOn);

    const SendOutcome &outcome() const { return m_outcome; }
    /// The last mail, as it went to the server.
    const QByteArray &message() const { return m_message; }
    /// Why the send log could not be written the last time; empty when it was.
    const QString &logTrouble() const { return m_logTrouble; }

private:
    void log(const QString &to);

    MailSettings m_settings;
    const Clock &m_clock;
    SendOutcome m_outcome;
    QByteArray m_message;
    QString m_logTrouble;
};
