#include "print/mail/mail_message.h"

#include "print/mail/mail_address.h"
#include "print/mail/mail_text.h"

#include <QStringList>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestLine = 998;
constexpr qsizetype base64Line = 76;

QByteArray personHeader(const QByteArray &header, const MailPerson &person) {
    const QByteArray name = headerName(person.name, header.size() + 2);
    const QByteArray address = wireAddress(person.address);
    return header + ": " + (name.isEmpty() ? address : name + "\r\n <" + address + '>') + "\r\n";
}

QByteArray dateHeader(const QDateTime &date) {
    return "Date: " + date.toString(Qt::RFC2822Date).toLatin1() + "\r\n";
}

QByteArray idHeader(const MailMessage &message) {
    const QByteArray sender = wireAddress(message.from.address);
    return "Message-ID: <" + message.id.toByteArray(QUuid::WithoutBraces) +
           sender.mid(sender.lastIndexOf('@')) + ">\r\n";
}

// A break stays a break; any other control character would be a stray byte in the mail.
QString bodyText(const QString &body) {
    QString text = body;
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QStringList lines = text.split(u'\n');
    for (QString &line : lines)
        line = onOneLine(line);
    return lines.join(u"\r\n"_s) + u"\r\n"_s;
}

bool linesAreShort(const QByteArray &bytes) {
    const QList<QByteArray> lines = bytes.split('\n');
    return std::ranges::all_of(lines, [](const QByteArray &line) { return line.size() - 1 <= longestLine; });
}

QByteArray inBase64(const QByteArray &bytes) {
    const QByteArray code = bytes.toBase64();
    QByteArray lines;
    for (qsizetype at = 0; at < code.size(); at += base64Line)
        lines += code.mid(at, base64Line) + "\r\n";
    return lines;
}

} // namespace

QByteArray mailBytes(const MailMessage &message) {
    if (wireAddress(message.from.address).isEmpty() || wireAddress(message.to.address).isEmpty())
        return {};
    const MailText body = encodeMailText(bodyText(message.body));
    const bool sevenBit = body.charset != "UTF-8" && linesAreShort(body.bytes);
    return personHeader("From", message.from) + personHeader("To", message.to) +
           "Subject: " + headerText(message.subject, qsizetype(sizeof "Subject:")) + "\r\n" +
           dateHeader(message.date) + idHeader(message) + "MIME-Version: 1.0\r\n" +
           "Content-Type: text/plain; charset=" + body.charset + "\r\n" +
           "Content-Transfer-Encoding: " + (sevenBit ? "7bit" : "base64") + "\r\n\r\n" +
           (sevenBit ? body.bytes : inBase64(body.bytes));
}
