#include "print/mail/mail_address.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestLocalPart = 64;
constexpr qsizetype longestAddress = 254;

bool isLocalPart(const QString &text) {
    static const QRegularExpression pattern(u"\\A[A-Za-z0-9!#$%&'*+/=?^_`{|}~.-]+\\z"_s);
    return text.size() <= longestLocalPart && pattern.match(text).hasMatch();
}

bool isDomain(const QString &text) {
    static const QRegularExpression pattern(
        u"\\A([A-Za-z0-9]([A-Za-z0-9-]{0,61}[A-Za-z0-9])?\\.)+[A-Za-z0-9-]*[A-Za-z][A-Za-z0-9-]*\\z"_s);
    return pattern.match(text).hasMatch();
}

} // namespace

QString whyNoAddress(const QString &address) {
    const QString text = address.trimmed();
    if (text.isEmpty())
        return u"メールアドレスが登録されていません。"_s;
    for (const QChar c : text)
        if (c.unicode() > 0x7E)
            return u"メールアドレス「%1」に全角文字が含まれています。"_s.arg(text);
    const qsizetype at = text.lastIndexOf(u'@');
    if (at < 0 || text.size() > longestAddress || !isLocalPart(text.left(at)) || !isDomain(text.mid(at + 1)))
        return u"メールアドレス「%1」が正しくありません。"_s.arg(text.simplified());
    return {};
}

QByteArray wireAddress(const QString &address) {
    if (!whyNoAddress(address).isEmpty())
        return {};
    const QString text = address.trimmed();
    const QString local = text.left(text.lastIndexOf(u'@'));
    if (!local.startsWith(u'.') && !local.endsWith(u'.') && !local.contains(u".."_s))
        return text.toLatin1();
    return u"\"%1\"%2"_s.arg(local, text.mid(local.size())).toLatin1();
}
