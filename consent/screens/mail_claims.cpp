#include "consent/screens/mail_claims.h"

Result<std::vector<MailRow>> RecordMailClaims::claim(const std::vector<MailRow> &rows) {
    std::vector<NoticeOfDate> dates;
    for (const MailRow &row : rows)
        dates.push_back({row.patient, row.nDate, row.sent});
    Result<MailClaim> claimed = claimForMail(m_db, dates);
    if (!claimed)
        return Failure{claimed.reason()};
    m_claim = std::move(*claimed);
    std::vector<MailRow> overtaken;
    for (const size_t position : m_claim.overtaken)
        overtaken.push_back(rows[position]);
    return overtaken;
}

Result<> RecordMailClaims::giveBack() {
    return ::giveBack(m_db, m_claim);
}
