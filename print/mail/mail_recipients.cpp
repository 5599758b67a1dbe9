#include "print/mail/mail_recipients.h"

#include "app/base/dates.h"
#include "print/mail/mail_address.h"
#include "print/mail/mail_text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int ruleLength = 76;

/// The first row of each patient, in the order of the rows. A patient may stand there twice: for massage and
/// for deformity correction.
std::vector<const MailRow *> patientsOf(const std::vector<MailRow> &rows) {
    std::vector<const MailRow *> first;
    for (const MailRow &row : rows)
        if (std::ranges::none_of(first, [&](const MailRow *seen) { return seen->patient == row.patient; }))
            first.push_back(&row);
    return first;
}

QString hindranceOf(const MailRecipient &recipient) {
    if (recipient.rows.empty())
        return u"対象の利用者はいません。"_s;
    return whyNoAddress(recipient.counsellor.cMail1);
}

} // namespace

QString Counsellor::who() const {
    return u"%1（%2）"_s.arg(onOneLine(cName).trimmed(), cMail1.trimmed());
}

int MailRecipient::patients() const {
    return int(patientsOf(rows).size());
}

int MailRecipient::toldBefore() const {
    std::vector<MailRow> told;
    std::ranges::copy_if(rows, std::back_inserter(told), &MailRow::sent);
    return int(patientsOf(told).size());
}

MailPlan planMails(const std::vector<Counsellor> &active, const std::vector<PatientCounsellor> &counsellorOf,
                   const std::vector<MailRow> &rows) {
    MailPlan plan;
    for (const Counsellor &counsellor : active)
        plan.recipients.push_back({counsellor, {}, {}});
    for (const MailRow &row : rows) {
        const auto theirs = std::ranges::find(counsellorOf, row.patient, &PatientCounsellor::patient);
        const auto recipient =
            theirs == counsellorOf.end()
                ? plan.recipients.end()
                : std::ranges::find(plan.recipients, theirs->counsellor, &MailRecipient::counsellor);
        if (recipient != plan.recipients.end())
            recipient->rows.push_back(row);
        else
            plan.unreached.append(row.who());
    }
    plan.unreached.removeDuplicates();
    for (MailRecipient &recipient : plan.recipients)
        recipient.hindrance = hindranceOf(recipient);
    return plan;
}

QString noticeBody(const std::vector<MailRow> &rows) {
    QStringList lines = {u"下記ご利用者様の同意書が出来ました。"_s, u"＜ご利用者＞"_s,
                         QString(ruleLength, u'-')};
    for (const MailRow *row : patientsOf(rows))
        lines.append(onOneLine(row->name) + u"さん [ID："_s + QString::number(row->patient.nIDNo) + u"]"_s);
    lines.append(u"以上"_s);
    return lines.join(u"\r\n"_s);
}

QString noticeSubjectEnd(const QDate &today) {
    return u"（%1）"_s.arg(dateText(today));
}
