#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUuid>

/// Somebody with a mail address.
struct MailPerson {
    QString name; ///< may be empty
    QString address;
};

/// One mail without attachments.
struct MailMessage {
    MailPerson from;
    MailPerson to;
    QString subject;
    QString body; ///< lines parted by CR LF
    QDateTime date;
    QUuid id; ///< makes the Message-ID unique
};

/// The message as it goes to the server, in lines of at most 998 bytes that end in CR LF. Names and subject
/// cannot add header lines, whatever they hold. Empty when an address is none.
QByteArray mailBytes(const MailMessage &message);
