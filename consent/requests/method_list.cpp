#include "consent/requests/method_list.h"

#include "app/base/request_methods.h"

using namespace Qt::Literals::StringLiterals;

MethodList::MethodList(const QStringList &texts, const MethodUses &uses)
    : m_read(texts), m_texts(texts), m_uses(uses) {}

QString MethodList::whyNot(const QString &text, int except) const {
    const qsizetype same = m_texts.indexOf(text);
    if (!text.isEmpty() && same >= 0 && same != except)
        return u"「%1」は %2 番にあります。"_s.arg(text, QString::number(same + 1));
    return whyMethodIsWrong(text);
}

QString MethodList::whyFixed(int entry) const {
    if (uses(entry) == 0)
        return {};
    return u"%1 番「%2」は %3 件の同意で使われているため、番号を変えられません。"_s.arg(
        QString::number(entry + 1), m_texts[entry], QString::number(uses(entry)));
}

QString MethodList::add(const QString &typed) {
    const QString text = normalMethod(typed);
    if (const QString why = whyNot(text, -1); !why.isEmpty())
        return why;
    if (m_texts.size() >= RequestMethods::most)
        return u"依頼方法は %1 件まで登録できます。これ以上は追加できません。\r\n"
               "使われていない行の文言を変更して登録してください。"_s.arg(RequestMethods::most);
    m_texts.append(text);
    return {};
}

QString MethodList::change(int entry, const QString &typed) {
    const QString text = normalMethod(typed);
    if (const QString why = whyNot(text, entry); !why.isEmpty())
        return why;
    m_texts[entry] = text;
    return {};
}

void MethodList::remove(int entry) {
    m_texts[entry].clear();
    while (!m_texts.isEmpty() && m_texts.last().isEmpty() && uses(int(m_texts.size()) - 1) == 0)
        m_texts.removeLast();
}

QString MethodList::move(int entry, int by) {
    const int other = entry + by;
    if (other < 0 || other >= m_texts.size())
        return {};
    for (const int moved : {entry, other})
        if (const QString why = whyFixed(moved); !why.isEmpty())
            return why;
    m_texts.swapItemsAt(entry, other);
    return {};
}

QStringList MethodList::newMeanings(const MethodUses &uses) const {
    const auto shown = [](const QString &text) { return text.isEmpty() ? u"欠番"_s : text; };
    QStringList meanings;
    for (int i = 0; i < m_read.size(); ++i)
        if (const int rows = uses.value(i + 1); rows > 0 && m_texts.value(i) != m_read[i])
            meanings.append(u"%1　%2 → %3（%4 件）"_s.arg(QString::number(i + 1), shown(m_read[i]),
                                                          shown(m_texts.value(i)), QString::number(rows)));
    return meanings;
}

QStringList ownMethodsOf(const QString &stored) {
    QStringList methods;
    for (const QString &method : stored.split(u','))
        if (const QString text = method.trimmed(); !text.isEmpty())
            methods.append(text);
    return methods;
}

QString storedOwnMethods(const QStringList &methods) {
    return methods.isEmpty() ? u""_s : methods.join(u',');
}
