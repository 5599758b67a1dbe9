#include "db/connection_string.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

QChar asciiLower(QChar c) {
    return c >= u'A' && c <= u'Z' ? QChar(c.unicode() + 32) : c;
}

QStringView trimmed(QStringView text) {
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.mid(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

bool namesOdbcSource(const ConnectionItem &item) {
    return sameKeyword(item.keyword, u"Driver") || sameKeyword(item.keyword, u"DSN") ||
           sameKeyword(item.keyword, u"FileDSN");
}

class Parser {
public:
    Parser(QStringView text, QStringView quotes) : m_text(text), m_quotes(quotes) {}

    QList<ConnectionItem> items;
    QString reason;

    void run() {
        while (reason.isEmpty() && skipToItem()) {
            ConnectionItem item;
            item.at = m_at + 1;
            if (readKeyword(item.keyword) && readValue(item))
                items.append(item);
        }
    }

private:
    bool atEnd() const { return m_at >= m_text.size(); }
    QChar here() const { return m_text[m_at]; }

    void skipBlanks() {
        while (!atEnd() && isBlank(here()))
            ++m_at;
    }

    bool skipToItem() {
        while (!atEnd() && (isBlank(here()) || here() == u';'))
            ++m_at;
        return !atEnd();
    }

    bool fail(qsizetype at, const QString &what) {
        reason = u"接続文字列の%1文字目からの項目を読めません。%2"_s.arg(at).arg(what);
        return false;
    }

    bool readKeyword(QString &keyword) {
        const qsizetype start = m_at;
        QString read;
        for (; !atEnd() && here() != u';'; ++m_at) {
            if (here() == u'=') {
                if (m_at + 1 >= m_text.size() || m_text[m_at + 1] != u'=')
                    break;
                ++m_at;
            }
            read += here();
        }
        if (atEnd() || here() == u';')
            return fail(start + 1, u"「=」がありません。「;」を含む値は引用符で囲んでください。"_s);
        keyword = trimmed(read).toString();
        if (keyword.isEmpty())
            return fail(start + 1, u"「=」の前に項目名がありません。"_s);
        ++m_at;
        return true;
    }

    bool readValue(ConnectionItem &item) {
        skipBlanks();
        if (!atEnd() && m_quotes.contains(here()))
            return readQuoted(item);
        const qsizetype start = m_at;
        while (!atEnd() && here() != u';')
            ++m_at;
        item.value = trimmed(m_text.mid(start, m_at - start)).toString();
        return true;
    }

    bool readQuoted(ConnectionItem &item) {
        const QChar closer = here() == u'{' ? QChar(u'}') : here();
        item.value = u""_s;
        for (++m_at; !atEnd(); ++m_at) {
            if (here() == closer) {
                if (m_at + 1 >= m_text.size() || m_text[m_at + 1] != closer)
                    break;
                ++m_at;
            }
            item.value += here();
        }
        if (atEnd())
            return fail(item.at, u"値の引用符「%1」が閉じられていません。"_s.arg(closer));
        ++m_at;
        skipBlanks();
        if (!atEnd() && here() != u';')
            return fail(item.at, u"引用符「%1」で閉じた値の後に余分な文字があります。"_s.arg(closer));
        return true;
    }

    QStringView m_text;
    QStringView m_quotes;
    qsizetype m_at = 0;
};

/// The first keyword that says whose string it is decides; without one it is OLE DB's.
bool isOdbc(const QList<ConnectionItem> &items) {
    const auto sign = std::find_if(items.begin(), items.end(), [](const ConnectionItem &item) {
        return sameKeyword(item.keyword, u"Provider") || namesOdbcSource(item);
    });
    return sign != items.end() && namesOdbcSource(*sign);
}

} // namespace

bool sameKeyword(QStringView a, QStringView b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](QChar x, QChar y) { return asciiLower(x) == asciiLower(y); });
}

ConnectionString::ConnectionString(const QString &text) : m_text(text) {
    Parser parser(m_text, u"'\"{");
    parser.run();
    if (isOdbc(parser.items) || !parser.reason.isEmpty()) {
        // A quote at the front of a value is an ordinary sign in ODBC.
        Parser odbc(m_text, u"{");
        odbc.run();
        if (isOdbc(odbc.items)) {
            parser = odbc;
            m_kind = Kind::Odbc;
        }
    }
    m_items = parser.items;
    m_reason = parser.reason;
    if (m_reason.isEmpty() && m_items.isEmpty())
        m_reason = u"接続文字列が空です。"_s;
    if (m_kind == Kind::OleDb && sameKeyword(value(u"Provider"), u"SQLite"))
        m_kind = Kind::Embedded;
}

QString ConnectionString::value(QStringView keyword) const {
    const auto matches = [&](const ConnectionItem &item) { return sameKeyword(item.keyword, keyword); };
    if (m_kind == Kind::Odbc || sameKeyword(keyword, u"Provider")) {
        const auto first = std::find_if(m_items.begin(), m_items.end(), matches);
        return first == m_items.end() ? QString() : first->value;
    }
    const auto last = std::find_if(m_items.rbegin(), m_items.rend(), matches);
    return last == m_items.rend() ? QString() : last->value;
}
