#pragma once

#include "app/base/result.h"
#include "print/mail/email.h"
#include "print/mail/mail_recipients.h"

/// What became of one recipient's mail.
struct MailResult {
    enum Kind {
        Sent,
        Uncertain, ///< it may have arrived; its rows stay marked as told
        Failed,
        NotGivenBack, ///< not sent, but its rows are still marked as told
        Overtaken,    ///< not sent, since its rows have other marks now, or are gone
        NotTried
    };
    Kind kind = NotTried;
    QString reason; ///< for the user; may be a remark on a mail that was sent

    bool wasSent() const { return kind == Sent; }
    bool mayHaveArrived() const { return kind == Sent || kind == Uncertain; }
    /// Whether rows are other than the caller knows them.
    bool rowsChanged() const { return mayHaveArrived() || kind == Overtaken || kind == NotGivenBack; }
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

/// The port through which the rows of a mail are marked as told.
class MailClaims {
public:
    virtual ~MailClaims() = default;
    /// Marks the rows, all or none, so that no colleague tells of them meanwhile.
    /// @return the rows of which a colleague told, or which are gone; then none was marked
    virtual Result<std::vector<MailRow>> claim(const std::vector<MailRow> &rows) = 0;
    /// Takes the marks of the last claim back.
    virtual Result<> giveBack() = 0;
    /// The mail of the last claim has left, or may have.
    virtual void left(const MailRecipient &recipient, const QByteArray &message) = 0;
    /// No further mail of this run.
    virtual void ended() = 0;
};

/// Sends each recipient one mail. Its rows are claimed first, and given back when the mail cannot have
/// arrived: of two users who mail the same rows for the first time only one does. Who mails again, knowing of
/// the first mail, is held up by nobody. Who has rows that a colleague told of, or removed, meanwhile gets
/// none. Ends early when it is stopped, when the server is of no use and when rows cannot be claimed or given
/// back.
/// @return a result for each recipient
std::vector<MailResult> runMails(MailClaims &claims, mEmail &mail,
                                 const std::vector<MailRecipient> &recipients, const QDate &today,
                                 MailWatch &watch);

/// How many mails came to which end.
QString mailSummary(const std::vector<MailResult> &results);

/// What became of one recipient's mail and why, a line or two.
QString mailResultLine(const MailRecipient &recipient, const MailResult &result);
