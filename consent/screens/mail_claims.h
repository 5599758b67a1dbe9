#pragma once

#include "consent/record/sent_marks.h"
#include "print/mail/mail_run.h"

/// Mails tell of consent rows: they are claimed and given back where rows are written.
class RecordMailClaims : public MailClaims {
public:
    /// The connection must outlive the object.
    explicit RecordMailClaims(cT_ADODB &db) : m_db(db) {}

    Result<std::vector<MailRow>> claim(const std::vector<MailRow> &rows) override;
    Result<> giveBack() override;

private:
    cT_ADODB &m_db;
    MailClaim m_claim;
};
