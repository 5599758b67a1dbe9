#include "print/mail/email.h"

#include "app/base/clock.h"
#include "app/base/codepage932.h"
#include "print/mail/mail_address.h"
#include "print/mail/mail_text.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

short mEmail::nSendMail(const MailPerson &to, const QString &subjectEnd, const QString &body,
                        const std::function<bool()> &goOn) {
    const MailMessage message{{m_settings.senderName, m_settings.senderAddress},
                              to,
                              m_settings.subject + subjectEnd,
                              body,
                              m_clock.now(),
                              QUuid::createUuid()};
    m_message = mailBytes(message);
    if (m_message.isEmpty())
        m_outcome = {SendOutcome::Failed, whyNoAddress(to.address)};
    else
        m_outcome = sendMail(m_settings.server, wireAddress(m_settings.senderAddress),
                             wireAddress(to.address), m_message, goOn);
    log(to.address.trimmed());
    return m_outcome.kind == SendOutcome::Accepted ? 1 : 0;
}

// Every part is on one line; only the tab between sender and log-in is the log's own. A server may quote what
// it was sent.
void mEmail::log(const QString &to) {
    const bool accepted = m_outcome.kind == SendOutcome::Accepted;
    QString entry = m_clock.now().toString(u"yyyy/MM/dd HH:mm:ss ") +
                    (accepted ? u"送信完了 "_s : u"送信エラー "_s) + u"■Server："_s +
                    m_settings.server.argument() + u" ■From："_s + m_settings.senderArgument() + u" ■To："_s +
                    onOneLine(to);
    if (!accepted) {
        QString reason = onOneLine(m_outcome.reason);
        if (!m_settings.server.password.isEmpty())
            reason.replace(m_settings.server.password, u"****"_s);
        entry += u" ■Error-msg:"_s + reason;
    }
    const QByteArray line = encode932(entry).bytes + "\r\n";
    QFile file(QDir::current().filePath(u"MailSend.log"_s));
    constexpr auto ownersAlone = QFile::ReadOwner | QFile::WriteOwner; // it names who was told
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Append, ownersAlone) &&
                         file.setPermissions(ownersAlone) && file.write(line) == line.size() && file.flush();
    m_logTrouble = written ? QString()
                           : u"送信記録（%1）に書き込めません。%2"_s.arg(
                                 QDir::toNativeSeparators(file.fileName()), file.errorString());
}
