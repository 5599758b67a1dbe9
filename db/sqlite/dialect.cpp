#include "db/sqlite/dialect.h"

#include "db/sqlite/sql_tokens.h"

#include <QSet>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isTextType(const QString &type) {
    return type.contains(u"CHAR"_s, Qt::CaseInsensitive) || type.contains(u"TEXT"_s, Qt::CaseInsensitive);
}

// The system marks the type of a column by the first letters of its name.
bool isTextColumn(const QString &name) {
    const auto capitalAt = [&name](qsizetype at) { return at < name.size() && name[at].isUpper(); };
    return ((name.startsWith(u'c') || name.startsWith(u's')) && capitalAt(1)) ||
           (name.startsWith(u"cs"_s) && capitalAt(2));
}

/// One pass over a statement's tokens.
class Rewriting {
public:
    explicit Rewriting(const QString &sql) : m_tokens(sqlTokens(sql)) {}

    QString run() {
        for (size_t at = 0; at < m_tokens.size(); ++at) {
            dropNationalMark(at);
            takeTop(at);
            renameCalls(at);
            joinTexts(at);
        }
        return text();
    }

private:
    struct Insertion {
        size_t before; ///< token
        QString text;
    };

    const SqlToken *next(size_t at) const {
        const size_t found = nextSolid(m_tokens, at);
        return found < m_tokens.size() ? &m_tokens[found] : nullptr;
    }

    void dropNationalMark(size_t at) {
        if (m_tokens[at].isWord(u"N") && at + 1 < m_tokens.size() &&
            m_tokens[at + 1].kind == SqlToken::Literal)
            m_tokens[at].text.clear();
    }

    // TOP n or TOP (n) goes behind the SELECT that it belongs to.
    void takeTop(size_t at) {
        if (!m_tokens[at].isWord(u"SELECT"))
            return;
        size_t top = nextSolid(m_tokens, at);
        if (top < m_tokens.size() && (m_tokens[top].isWord(u"DISTINCT") || m_tokens[top].isWord(u"ALL")))
            top = nextSolid(m_tokens, top);
        if (top >= m_tokens.size() || !m_tokens[top].isWord(u"TOP"))
            return;
        const size_t count = nextSolid(m_tokens, top);
        if (count >= m_tokens.size())
            return;
        const size_t last = m_tokens[count].is(u"(") ? closing(m_tokens, count) : count;
        QString limit;
        for (size_t i = count; i <= last && i < m_tokens.size(); ++i) {
            limit += m_tokens[i].text;
            m_tokens[i].text.clear();
        }
        m_tokens[top].text.clear();
        m_insertions.push_back({endOfSelect(m_tokens, at), u" LIMIT "_s + limit});
    }

    void renameCalls(size_t at) {
        SqlToken &token = m_tokens[at];
        const size_t open = nextSolid(m_tokens, at);
        if (token.kind != SqlToken::Word || open >= m_tokens.size() || !m_tokens[open].is(u"("))
            return;
        if (token.isWord(u"ISNULL")) {
            token.text = u"ifnull"_s;
        } else if (token.isWord(u"CONVERT")) {
            // The type becomes a literal, its length with it.
            size_t comma = nextSolid(m_tokens, open);
            QString type;
            for (int depth = 0; comma < m_tokens.size(); ++comma) {
                if (depth == 0 && m_tokens[comma].is(u","))
                    break;
                depth += m_tokens[comma].is(u"(") ? 1 : m_tokens[comma].is(u")") ? -1 : 0;
                type += m_tokens[comma].text;
                m_tokens[comma].text.clear();
            }
            token.text = u"convert_as"_s;
            m_tokens[open].text = u"('"_s + type.trimmed() + u"'"_s;
            if (isTextType(type))
                m_textCalls.insert(qsizetype(open));
        } else if (token.isWord(u"CAST")) {
            const size_t close = closing(m_tokens, open);
            bool afterAs = false;
            for (size_t i = open; i < close; ++i) {
                if (afterAs && isTextType(m_tokens[i].text))
                    m_textCalls.insert(qsizetype(open));
                afterAs = afterAs || m_tokens[i].isWord(u"AS");
            }
        } else {
            static const QSet<QString> textFunctions{u"SUBSTRING"_s, u"REPLACE"_s, u"LTRIM"_s, u"RTRIM"_s,
                                                     u"TRIM"_s,      u"UPPER"_s,   u"LOWER"_s, u"LEFT"_s,
                                                     u"RIGHT"_s,     u"GETDATE"_s};
            if (textFunctions.contains(token.text.toUpper()))
                m_textCalls.insert(qsizetype(open));
        }
    }

    void joinTexts(size_t at) {
        if (!m_tokens[at].is(u"+"))
            return;
        const size_t before = previousSolid(m_tokens, at);
        if (before >= m_tokens.size())
            return;
        if (endsText(before) || beginsText(nextSolid(m_tokens, at)))
            m_tokens[at].text = u"||"_s;
    }

    // Whether the operand that ends with this token is a text.
    bool endsText(size_t at) const {
        const SqlToken &token = m_tokens[at];
        if (token.kind == SqlToken::Literal || (token.isName() && isTextColumn(token.name())))
            return true;
        if (token.is(u")") && m_textCalls.contains(qsizetype(opening(m_tokens, at))))
            return true;
        // a || b + c: the join goes on, whatever b is.
        size_t start = token.is(u")") ? opening(m_tokens, at) : at;
        for (size_t i = previousSolid(m_tokens, start); i < m_tokens.size(); i = previousSolid(m_tokens, i)) {
            if (m_tokens[i].is(u"||"))
                return true;
            if (!m_tokens[i].is(u".") && !m_tokens[i].isName())
                return false;
        }
        return false;
    }

    // Whether the operand that begins with this token is a text; calls before it are not renamed yet.
    bool beginsText(size_t at) {
        if (at >= m_tokens.size())
            return false;
        if (m_tokens[at].isWord(u"N") && at + 1 < m_tokens.size() &&
            m_tokens[at + 1].kind == SqlToken::Literal)
            return true;
        if (m_tokens[at].kind == SqlToken::Literal)
            return true;
        const size_t open = nextSolid(m_tokens, at);
        if (open < m_tokens.size() && m_tokens[open].is(u"(")) {
            renameCalls(at);
            return m_textCalls.contains(qsizetype(open));
        }
        while (const SqlToken *dot = next(at)) {
            if (!dot->is(u"."))
                break;
            at = nextSolid(m_tokens, nextSolid(m_tokens, at));
            if (at >= m_tokens.size())
                return false;
        }
        return m_tokens[at].isName() && isTextColumn(m_tokens[at].name());
    }

    QString text() const {
        QString text;
        for (size_t at = 0; at <= m_tokens.size(); ++at) {
            // The inner SELECT's limit was found later and stands first where both end together.
            for (auto it = m_insertions.rbegin(); it != m_insertions.rend(); ++it)
                if (it->before == at)
                    text += it->text;
            if (at < m_tokens.size())
                text += m_tokens[at].text;
        }
        return text;
    }

    std::vector<SqlToken> m_tokens;
    std::vector<Insertion> m_insertions;
    QSet<qsizetype> m_textCalls; ///< opening brackets of calls that give a text
};

} // namespace

QString embeddedDialect(const QString &sql) {
    return Rewriting(sql).run();
}
