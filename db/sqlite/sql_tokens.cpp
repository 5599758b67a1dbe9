#include "db/sqlite/sql_tokens.h"

namespace {

bool beginsWord(QChar c) {
    return c.isLetter() || c == u'_' || c == u'@' || c == u'#' || c.unicode() > 0x7f;
}

// Behind the closing sign of what begins at `at`; a doubled sign stands for one.
qsizetype quotedEnd(const QString &sql, qsizetype at, QChar close) {
    for (qsizetype i = at + 1; i < sql.size(); ++i) {
        if (sql[i] != close)
            continue;
        if (i + 1 < sql.size() && sql[i + 1] == close)
            ++i;
        else
            return i + 1;
    }
    return sql.size();
}

template <class Test> qsizetype whileTrue(const QString &sql, qsizetype at, Test test) {
    while (at < sql.size() && test(sql[at]))
        ++at;
    return at;
}

qsizetype behind(const QString &sql, QStringView sign, qsizetype from) {
    const qsizetype at = sql.indexOf(sign, from);
    return at < 0 ? sql.size() : at + sign.size();
}

qsizetype tokenEnd(const QString &sql, qsizetype at, SqlToken::Kind &kind) {
    const QChar c = sql[at];
    const QStringView rest = QStringView(sql).mid(at);
    kind = SqlToken::Space;
    if (c.isSpace())
        return whileTrue(sql, at, [](QChar x) { return x.isSpace(); });
    if (rest.startsWith(u"--"))
        return behind(sql, u"\n", at);
    if (rest.startsWith(u"/*"))
        return behind(sql, u"*/", at + 2);
    kind = SqlToken::Literal;
    if (c == u'\'')
        return quotedEnd(sql, at, c);
    kind = SqlToken::QuotedName;
    if (c == u'"')
        return quotedEnd(sql, at, c);
    if (c == u'[')
        return quotedEnd(sql, at, u']');
    kind = SqlToken::Number;
    if (c.isDigit())
        return whileTrue(sql, at, [](QChar x) { return x.isLetterOrNumber() || x == u'.'; });
    kind = SqlToken::Word;
    if (beginsWord(c))
        return whileTrue(sql, at, [](QChar x) { return beginsWord(x) || x.isDigit() || x == u'$'; });
    kind = SqlToken::Symbol;
    return at + (rest.startsWith(u"||") ? 2 : 1);
}

int bracket(const SqlToken &token) {
    return token.is(u"(") || token.text.startsWith(u"('") ? 1 : token.is(u")") ? -1 : 0;
}

} // namespace

std::vector<SqlToken> sqlTokens(const QString &sql) {
    std::vector<SqlToken> tokens;
    for (qsizetype at = 0; at < sql.size();) {
        SqlToken::Kind kind;
        const qsizetype end = tokenEnd(sql, at, kind);
        tokens.push_back({kind, sql.mid(at, end - at)});
        at = end;
    }
    return tokens;
}

size_t nextSolid(const std::vector<SqlToken> &tokens, size_t at) {
    for (++at; at < tokens.size(); ++at)
        if (tokens[at].kind != SqlToken::Space && !tokens[at].text.isEmpty())
            break;
    return std::min(at, tokens.size());
}

size_t previousSolid(const std::vector<SqlToken> &tokens, size_t at) {
    while (at-- > 0)
        if (tokens[at].kind != SqlToken::Space && !tokens[at].text.isEmpty())
            return at;
    return tokens.size();
}

size_t closing(const std::vector<SqlToken> &tokens, size_t at) {
    int depth = 0;
    for (size_t i = at; i < tokens.size(); ++i)
        if ((depth += bracket(tokens[i])) == 0)
            return i;
    return tokens.size() - 1;
}

size_t opening(const std::vector<SqlToken> &tokens, size_t at) {
    int depth = 0;
    for (size_t i = at + 1; i-- > 0;)
        if ((depth += bracket(tokens[i])) == 0)
            return i;
    return 0;
}

size_t endOfSelect(const std::vector<SqlToken> &tokens, size_t at) {
    int depth = 0;
    for (size_t i = at; i < tokens.size(); ++i) {
        depth += bracket(tokens[i]);
        const bool ends = depth < 0 || (depth == 0 && (tokens[i].is(u";") || tokens[i].isWord(u"UNION")));
        if (ends)
            return i;
    }
    // Before a closing comment, which would swallow what is added behind it.
    const size_t last = previousSolid(tokens, tokens.size());
    return last < tokens.size() ? last + 1 : tokens.size();
}
