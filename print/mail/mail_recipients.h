#pragma once

#include "print/mail/mail_query.h"

#include <QDate>
#include <QStringList>

/// A counsellor and the rows of which a mail would tell.
struct MailRecipient {
    Counsellor counsellor;
    std::vector<MailRow> rows;
    QString hindrance; ///< why no mail can go; empty when one can

    /// How many patients the rows are of.
    int patients() const;
    /// How many of them have been told of before.
    int toldBefore() const;
};

/// Who is told of what.
struct MailPlan {
    std::vector<MailRecipient> recipients; ///< every active counsellor, in the order read
    QStringList unreached;                 ///< "IDNo name" of patients without an active counsellor
};

/// Groups rows by the patients' counsellors.
MailPlan planMails(const std::vector<Counsellor> &active, const std::vector<PatientCounsellor> &counsellorOf,
                   const std::vector<MailRow> &rows);

/// The text of the mail: each patient of the rows once. Line breaks inside names become blanks.
QString noticeBody(const std::vector<MailRow> &rows);

/// What follows the configured subject: the day, so that two days' mails can be told apart. No names:
/// subjects are shown on lock screens.
QString noticeSubjectEnd(const QDate &today);
