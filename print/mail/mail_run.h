#pragma once

#include "print/mail/email.h"
#include "print/mail/mail_recipients.h"

class cT_ADODB;

/// What became of one recipient's mail.
struct MailResult {
    enum Kind {
        Sent,
        NotMarked, ///< sent, but the database did not take the mark
        Uncertain, ///< it may have arrived
        Failed,
        Overtaken, ///< not sent, since its rows have other marks now, or are gone
        NotTried
    };
    Kind kind = NotTried;
    QString reason; ///< for the user; may be a remark on a mail that was sent

    bool wasSent() const { return kind == Sent || kind == NotMarked; }
    /// Whether rows are other than the caller knows them.
    bool rowsChanged() const { return wasSent() || kind == Overtaken; }
};

/// Follows a run of mails.
class MailWatch {
public:
    virtual ~MailWatch() = default;
    virtual void begins(size_t recipient) = 0;
    virtual void ended(size_t recipient, const MailResult &result) = 0;
    /// Called some fifty times a second; false asks to stop, which happens before the next mail at the
    /// latest.
    virtual bool goOn() = 0;
};

/// Sends each recipient one mail and marks its rows, a transaction each, when the server has accepted it. Who
/// has rows that a colleague told of, or removed, meanwhile gets none.
/// Ends early when it is stopped, when the server is of no use and when a mark cannot be written: then it
/// would never be known who has got a mail.
/// @return a result for each recipient
std::vector<MailResult> runMails(cT_ADODB &db, mEmail &mail, const std::vector<MailRecipient> &recipients,
                                 const QDate &today, MailWatch &watch);

/// How many mails came to which end.
QString mailSummary(const std::vector<MailResult> &results);

/// What became of one recipient's mail and why, a line or two.
QString mailResultLine(const MailRecipient &recipient, const MailResult &result);
