#include "consent/screens/mail_claims.h"

#include "app/base/environment.h"
#include "app/base/messages.h"

using namespace Qt::Literals::StringLiterals;

SentRun &RecordMailClaims::run() {
    if (!m_run)
        m_run.emplace(m_environment, m_db, u"メール送信"_s);
    return *m_run;
}

Result<std::vector<MailRow>> RecordMailClaims::claim(const std::vector<MailRow> &rows) {
    std::vector<NoticeOfDate> dates;
    for (const MailRow &row : rows)
        dates.push_back({row.patient, row.nDate, row.sent});
    Result<MailClaim> claimed = claimForMail(m_db, dates, run().operation());
    if (!claimed)
        return Failure{claimed.reason()};
    m_claim = std::move(*claimed);
    std::vector<MailRow> overtaken;
    for (const size_t position : m_claim.overtaken)
        overtaken.push_back(rows[position]);
    return overtaken;
}

Result<> RecordMailClaims::giveBack() {
    return ::giveBack(m_db, m_claim, run().operation());
}

void RecordMailClaims::left(const MailRecipient &recipient, const QByteArray &message) {
    run().addMail(recipient.counsellor.who(), message);
    ++m_mails;
    m_rows += std::ssize(recipient.rows);
}

void RecordMailClaims::ended() {
    if (m_run)
        noteUnkept(m_environment.messages,
                   m_run->finish(std::exchange(m_rows, 0), std::exchange(m_mails, 0)));
    m_run.reset();
}
