#include "db/dialect/sql_tokens.h"

#include <algorithm>

namespace {

constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Every byte of a character beyond ASCII belongs to a name.
constexpr bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c) || c == '_' || c == '@' ||
           c == '#' || c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

class Scanner {
public:
    explicit Scanner(std::string_view sql) : m_sql(sql) {}

    std::vector<SqlToken> all() {
        std::vector<SqlToken> tokens;
        // A token of an ordinary statement takes some six bytes, the blanks around it included.
        tokens.reserve(std::min<size_t>(m_sql.size() / 6 + 8, 4096));
        for (skipBlanks(); m_at < m_sql.size(); skipBlanks())
            tokens.push_back(next());
        return tokens;
    }

private:
    char peek(size_t ahead = 0) const { return m_at + ahead < m_sql.size() ? m_sql[m_at + ahead] : '\0'; }

    void skipBlanks() {
        while (m_at < m_sql.size()) {
            if (isBlank(peek()))
                ++m_at;
            else if (peek() == '-' && peek(1) == '-')
                m_at = std::min(m_sql.find('\n', m_at), m_sql.size());
            else if (peek() == '/' && peek(1) == '*')
                skipPast("*/", m_at + 2);
            else
                return;
        }
    }

    void skipPast(std::string_view closing, size_t from) {
        const size_t found = m_sql.find(closing, from);
        m_at = found == std::string_view::npos ? m_sql.size() : found + closing.size();
    }

    /// From the opening sign at m_at; a doubled closing sign stands for itself.
    void skipQuoted(char closing) {
        ++m_at;
        do
            skipPast({&closing, 1}, m_at);
        while (peek() == closing && ++m_at);
    }

    template <class Predicate> void skipWhile(Predicate predicate) {
        while (m_at < m_sql.size() && predicate(m_sql[m_at]))
            ++m_at;
    }

    SqlToken next() {
        const size_t from = m_at;
        const SqlToken::Kind kind = pass();
        return {kind, from, m_sql.substr(from, m_at - from)};
    }

    SqlToken::Kind pass() {
        const char c = peek();
        if ((c == 'N' || c == 'n') && peek(1) == '\'')
            ++m_at;
        if (peek() == '\'') {
            skipQuoted('\'');
            return SqlToken::Kind::Text;
        }
        if (c == '$' && peek(1) == '$') {
            skipPast("$$", m_at + 2);
            return SqlToken::Kind::Text;
        }
        if (c == '[' || c == '"') {
            skipQuoted(c == '[' ? ']' : '"');
            return SqlToken::Kind::Word;
        }
        if (isDigit(c) || (c == '.' && isDigit(peek(1)))) {
            skipWhile([](char d) { return isNameCharacter(d) || d == '.'; });
            return SqlToken::Kind::Number;
        }
        if (isNameCharacter(c)) {
            skipWhile(isNameCharacter);
            return SqlToken::Kind::Word;
        }
        passSign();
        return SqlToken::Kind::Sign;
    }

    void passSign() {
        constexpr std::string_view pairs[] = {"<=", ">=", "<>", "!=", "||"};
        const std::string_view two = m_sql.substr(m_at, 2);
        m_at += std::ranges::find(pairs, two) != std::end(pairs) ? 2u : 1u;
    }

    std::string_view m_sql;
    size_t m_at = 0;
};

} // namespace

bool equalsUpper(std::string_view text, std::string_view upper) {
    return std::ranges::equal(
        text, upper, [](char a, char b) { return (a >= 'a' && a <= 'z' ? char(a - 'a' + 'A') : a) == b; });
}

bool SqlToken::isWord(std::string_view upper) const {
    return kind == Kind::Word && equalsUpper(text, upper);
}

std::vector<SqlToken> sqlTokens(std::string_view sql) {
    return Scanner(sql).all();
}
