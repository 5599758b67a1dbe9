#include "print/mail/mail_run.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString namesOf(const std::vector<MailRow> &rows) {
    QStringList names;
    for (const MailRow &row : rows)
        names.append(row.who());
    names.removeDuplicates();
    return names.join(u"、"_s);
}

/// One recipient after the other.
class Run {
public:
    Run(MailClaims &claims, mEmail &mail, const QDate &today, MailWatch &watch)
        : m_claims(claims), m_mail(mail), m_subjectEnd(noticeSubjectEnd(today)), m_watch(watch) {}

    /// Whether it goes on after the last result.
    bool goesOn() const { return m_whyEnded.isEmpty(); }
    const QString &whyEnded() const { return m_whyEnded; }

    MailResult mail(const MailRecipient &recipient) {
        if (!m_watch.goOn())
            return end({MailResult::NotTried, {}}, u"中止したため送信していません。"_s);
        const Result<std::vector<MailRow>> overtaken = m_claims.claim(recipient.rows);
        if (!overtaken)
            return end({MailResult::NotTried, overtaken.reason()},
                       u"データベースに記録できないため送信していません。"_s);
        if (!overtaken->empty())
            return {MailResult::Overtaken,
                    u"次の利用者の同意記録は他の端末で送信済になったか、変更されました。"
                    "画面を閉じて、一覧で確認してください：%1"_s.arg(namesOf(*overtaken))};
        const Counsellor &to = recipient.counsellor;
        m_mail.nSendMail({to.cName, to.cMail1}, m_subjectEnd, noticeBody(recipient.rows),
                         [this] { return m_watch.goOn(); });
        MailResult result = settled(resultOf());
        if (result.mayHaveArrived())
            m_claims.left(recipient, m_mail.message());
        if (!m_mail.logTrouble().isEmpty())
            result.reason += m_mail.logTrouble();
        return result;
    }

private:
    MailResult end(const MailResult &result, const QString &why) {
        m_whyEnded = why;
        return {result.kind, result.reason.isEmpty() ? why : result.reason};
    }

    MailResult resultOf() {
        const SendOutcome &outcome = m_mail.outcome();
        switch (outcome.kind) {
        case SendOutcome::Accepted:
            return {MailResult::Sent, {}};
        case SendOutcome::Uncertain:
            return {MailResult::Uncertain, outcome.reason};
        case SendOutcome::Stopped:
            return end({MailResult::NotTried, {}}, u"中止したため送信していません。"_s);
        case SendOutcome::NoServer:
            return end({MailResult::Failed, outcome.reason},
                       u"メールサーバーが使えないため送信していません。"_s);
        case SendOutcome::Failed:
            break;
        }
        return {MailResult::Failed, outcome.reason};
    }

    /// Rows of a mail that cannot have arrived are free again.
    MailResult settled(const MailResult &result) {
        if (result.mayHaveArrived())
            return result;
        const Result<> given = m_claims.giveBack();
        if (given)
            return result;
        return end({MailResult::NotGivenBack, result.reason + u"\r\n　　"_s + given.reason()},
                   u"送信済の記録を戻せなくなったため送信していません。"_s);
    }

    MailClaims &m_claims;
    mEmail &m_mail;
    QString m_subjectEnd;
    MailWatch &m_watch;
    QString m_whyEnded;
};

} // namespace

std::vector<MailResult> runMails(MailClaims &claims, mEmail &mail,
                                 const std::vector<MailRecipient> &recipients, const QDate &today,
                                 MailWatch &watch) {
    std::vector<MailResult> results(recipients.size());
    Run run(claims, mail, today, watch);
    for (size_t i = 0; i < recipients.size(); ++i) {
        if (run.goesOn())
            watch.begins(i);
        results[i] =
            run.goesOn() ? run.mail(recipients[i]) : MailResult{MailResult::NotTried, run.whyEnded()};
        watch.ended(i, results[i]);
    }
    claims.ended();
    return results;
}

QString mailResultLine(const MailRecipient &recipient, const MailResult &result) {
    const QString who = recipient.counsellor.who() + u"利用者 %1 名"_s.arg(recipient.patients());
    switch (result.kind) {
    case MailResult::Sent:
        return u"送信済　"_s + who + (result.reason.isEmpty() ? QString() : u"\r\n　　"_s + result.reason);
    case MailResult::NotGivenBack:
        return u"未送信　"_s + who +
               u"\r\n　　送信済の印を戻せませんでした。一覧で「送信済」を確認してください。"_s +
               result.reason;
    case MailResult::Uncertain:
        return u"不明　　"_s + who + u"\r\n　　送信済の印は付けたままです。"_s + result.reason;
    case MailResult::Failed:
    case MailResult::Overtaken:
    case MailResult::NotTried:
        break;
    }
    return u"未送信　"_s + who + u"\r\n　　"_s + result.reason;
}

QString mailSummary(const std::vector<MailResult> &results) {
    const auto sent = std::ranges::count_if(results, &MailResult::wasSent);
    const auto unknown = std::ranges::count(results, MailResult::Uncertain, &MailResult::kind);
    const auto all = std::ssize(results);
    return u"送信先 %1 件：送信済 %2 件"_s.arg(all).arg(sent) +
           (sent + unknown == all ? QString() : u"、未送信 %1 件"_s.arg(all - sent - unknown)) +
           (unknown == 0 ? QString() : u"、届いたか不明 %1 件"_s.arg(unknown));
}
