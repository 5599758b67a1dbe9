#include "print/mail/mail_run.h"

#include "db/adodb.h"

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
    Run(cT_ADODB &db, mEmail &mail, const QDate &today, MailWatch &watch)
        : m_db(db), m_mail(mail), m_subjectEnd(noticeSubjectEnd(today)), m_watch(watch) {}

    /// Whether it goes on after the last result.
    bool goesOn() const { return m_whyEnded.isEmpty(); }
    const QString &whyEnded() const { return m_whyEnded; }

    MailResult mail(const MailRecipient &recipient) {
        if (!m_watch.goOn())
            return end({MailResult::NotTried, {}}, u"中止したため送信していません。"_s);
        // Without a database the mark could not be written afterwards.
        const ErrorsSince before(m_db);
        if (m_db.iConnect() != 0)
            return end({MailResult::NotTried, before.text()},
                       u"データベースに接続できないため送信していません。"_s);
        std::vector<MailRow> overtaken;
        if (iReadOvertaken(m_db, recipient.rows, overtaken) != 0)
            return end({MailResult::NotTried, before.text()},
                       u"データベースを読めないため送信していません。"_s);
        if (!overtaken.empty())
            return {MailResult::Overtaken,
                    u"次の利用者の同意記録は他の端末で送信済になったか、変更されました。"
                    "画面を閉じて、一覧で確認してください：%1"_s.arg(namesOf(overtaken))};
        const Counsellor &to = recipient.counsellor;
        m_mail.nSendMail({to.cName, to.cMail1}, m_subjectEnd, noticeBody(recipient.rows),
                         [this] { return m_watch.goOn(); });
        MailResult result = resultOf(recipient);
        if (!m_mail.logTrouble().isEmpty())
            result.reason += m_mail.logTrouble();
        return result;
    }

private:
    MailResult end(const MailResult &result, const QString &why) {
        m_whyEnded = why;
        return {result.kind, result.reason.isEmpty() ? why : result.reason};
    }

    MailResult resultOf(const MailRecipient &recipient) {
        const SendOutcome &outcome = m_mail.outcome();
        switch (outcome.kind) {
        case SendOutcome::Accepted:
            return mark(recipient);
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

    MailResult mark(const MailRecipient &recipient) {
        const ErrorsSince before(m_db);
        std::vector<MailRow> gone;
        Transaction transaction(m_db);
        bool marked = transaction.begun();
        for (const MailRow &row : recipient.rows) {
            bool found = false;
            marked = marked && iMarkSent(m_db, row, found) == 0;
            if (marked && !found)
                gone.push_back(row);
        }
        if (!marked || transaction.commit() != 0)
            return end({MailResult::NotMarked, before.text()},
                       u"送信済の記録ができなくなったため送信していません。"_s);
        if (gone.empty())
            return {MailResult::Sent, {}};
        return {MailResult::Sent,
                u"次の利用者の同意記録は他の端末で変更されたため、送信済にできませんでした：%1"_s.arg(
                    namesOf(gone))};
    }

    cT_ADODB &m_db;
    mEmail &m_mail;
    QString m_subjectEnd;
    MailWatch &m_watch;
    QString m_whyEnded;
};

} // namespace

std::vector<MailResult> runMails(cT_ADODB &db, mEmail &mail, const std::vector<MailRecipient> &recipients,
                                 const QDate &today, MailWatch &watch) {
    std::vector<MailResult> results(recipients.size());
    Run run(db, mail, today, watch);
    for (size_t i = 0; i < recipients.size(); ++i) {
        if (run.goesOn())
            watch.begins(i);
        results[i] =
            run.goesOn() ? run.mail(recipients[i]) : MailResult{MailResult::NotTried, run.whyEnded()};
        watch.ended(i, results[i]);
    }
    return results;
}

QString mailResultLine(const MailRecipient &recipient, const MailResult &result) {
    const QString who = recipient.counsellor.who() + u"利用者 %1 名"_s.arg(recipient.patients());
    switch (result.kind) {
    case MailResult::Sent:
        return u"送信済　"_s + who + (result.reason.isEmpty() ? QString() : u"\r\n　　"_s + result.reason);
    case MailResult::NotMarked:
        return u"送信済　"_s + who +
               u"\r\n　　メールは届けましたが、送信済の記録ができませんでした。"
               "もう一度送信しないでください。"_s +
               result.reason;
    case MailResult::Uncertain:
        return u"不明　　"_s + who + u"\r\n　　"_s + result.reason;
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
