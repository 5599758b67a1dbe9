#pragma once

#include "archive/sent_run.h"
#include "consent/record/sent_marks.h"
#include "print/mail/mail_run.h"

/// Mails tell of consent rows: they are claimed and given back where rows are written, and each run of mails
/// is a batch whose mails are kept.
class RecordMailClaims : public MailClaims {
public:
    /// The arguments must outlive the object.
    RecordMailClaims(const Environment &environment, cT_ADODB &db) : m_environment(environment), m_db(db) {}

    Result<std::vector<MailRow>> claim(const std::vector<MailRow> &rows) override;
    Result<> giveBack() override;
    void left(const MailRecipient &recipient, const QByteArray &message) override;
    void ended() override;

private:
    SentRun &run();

    const Environment &m_environment;
    cT_ADODB &m_db;
    std::optional<SentRun> m_run;
    int m_mails = 0;
    qint64 m_rows = 0; ///< that they tell of
    MailClaim m_claim;
};
