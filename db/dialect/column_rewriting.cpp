#include "db/dialect/column_rewriting.h"

#include "db/dialect/edits.h"
#include "db/dialect/sql_words.h"

#include <algorithm>
#include <map>

namespace {

/// A name in capitals, without the brackets or quotes around it.
std::string nameOf(const SqlToken &token) {
    std::string name(token.text);
    if (name.size() > 1 && (name[0] == '[' || name[0] == '"'))
        name = name.substr(1, name.size() - 2);
    std::ranges::transform(name, name.begin(),
                           [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
    return name;
}

class Renaming {
public:
    Renaming(const QByteArray &sql, const std::vector<TheirColumn> &columns)
        : m_sql(sql), m_columns(columns), m_tokens(sqlTokens({sql.constData(), size_t(sql.size())})) {}

    QByteArray renamed() {
        while (m_begin < m_tokens.size()) {
            m_end = m_begin;
            while (m_end < m_tokens.size() && !m_tokens[m_end].isSign(";"))
                ++m_end;
            passStatement();
            m_begin = m_end + 1;
        }
        return m_edits.applied(m_sql);
    }

private:
    using Items = std::vector<std::pair<size_t, size_t>>; ///< tokens, from and to

    const SqlToken *token(size_t i) const { return i >= m_begin && i < m_end ? &m_tokens[i] : nullptr; }
    bool isSign(size_t i, std::string_view sign) const { return token(i) && token(i)->isSign(sign); }
    bool isWord(size_t i, std::string_view upper) const { return token(i) && token(i)->isWord(upper); }
    bool isName(size_t i) const {
        return token(i) && token(i)->kind == SqlToken::Kind::Word && !isKeyword(*token(i));
    }

    void edit(size_t from, size_t to, std::string text) { m_edits.replace(from, to - from, std::move(text)); }

    void passStatement() {
        findTables();
        m_dropped.assign(m_tokens.size(), false);
        if (isWord(m_begin, "INSERT"))
            passInsert();
        else if (isWord(m_begin, "UPDATE"))
            passUpdate();
        for (size_t i = m_begin; i < m_end; ++i)
            if (const TheirColumn *column = m_dropped[i] ? nullptr : columnAt(i))
                rename(i, *column);
    }

    void findTables() {
        m_tables.clear();
        m_firstTable.clear();
        m_severalTables = false;
        for (size_t i = m_begin; i < m_end; ++i)
            if (isWord(i, "FROM") || isWord(i, "JOIN") || isWord(i, "INTO") || isWord(i, "UPDATE"))
                takeTable(i + 1);
    }

    void takeTable(size_t i) {
        if (!isName(i))
            return;
        const std::string table = nameOf(m_tokens[i]);
        m_severalTables = m_severalTables || (!m_firstTable.empty() && m_firstTable != table);
        if (m_firstTable.empty())
            m_firstTable = table;
        m_tables[table] = table;
        size_t next = i + 1;
        next += isWord(next, "AS") ? 1u : 0u;
        if (isName(next))
            m_tables[nameOf(m_tokens[next++])] = table;
        if (isSign(next, ","))
            takeTable(next + 1);
    }

    std::string tableOf(size_t i) const {
        if (i > m_begin && isSign(i - 1, ".")) {
            const auto found = m_tables.find(nameOf(m_tokens[i - 2]));
            return found == m_tables.end() ? std::string() : found->second;
        }
        const bool isAlias = i > m_begin && isWord(i - 1, "AS");
        const bool isClear = !m_severalTables || isWord(m_begin, "INSERT") || isWord(m_begin, "UPDATE");
        return isClear && !isAlias ? m_firstTable : std::string();
    }

    const TheirColumn *columnAt(size_t i) const {
        if (!isName(i))
            return nullptr;
        const std::string name = nameOf(m_tokens[i]);
        const auto found = std::ranges::find_if(m_columns, [&](const TheirColumn &column) {
            return column.column == name && column.table == tableOf(i);
        });
        return found == m_columns.end() ? nullptr : &*found;
    }

    void rename(size_t i, const TheirColumn &column) {
        const bool qualified = i > m_begin && isSign(i - 1, ".");
        if (column.theirs.empty())
            edit(m_tokens[qualified ? i - 2 : i].at, m_tokens[i].end(), "NULL");
        else
            edit(m_tokens[i].at, m_tokens[i].end(), column.theirs);
    }

    /// What commas part, up to the closing parenthesis or the clause that follows.
    Items items(size_t from) const {
        Items found{{from, from}};
        int depth = 0;
        size_t i = from;
        for (; i < m_end; ++i) {
            if (depth == 0 && (isSign(i, ")") || isWord(i, "FROM") || isWord(i, "WHERE")))
                break;
            depth += isSign(i, "(") ? 1 : isSign(i, ")") ? -1 : 0;
            if (depth == 0 && isSign(i, ",")) {
                found.back().second = i;
                found.push_back({i + 1, i + 1});
            }
        }
        found.back().second = i;
        return found;
    }

    /// Whether the column that an item begins with is missing.
    bool writesMissing(size_t item) const {
        const TheirColumn *column = columnAt(isSign(item + 1, ".") ? item + 2 : item);
        return column && column->theirs.empty();
    }

    std::vector<bool> missing(const Items &columns) const {
        std::vector<bool> result;
        for (const auto &[from, to] : columns)
            result.push_back(writesMissing(from));
        return result;
    }

    void passUpdate() {
        if (!isWord(m_begin + 2, "SET"))
            return;
        const Items assignments = items(m_begin + 3);
        drop(assignments, missing(assignments));
    }

    void passInsert() {
        if (!isWord(m_begin + 1, "INTO") || !isSign(m_begin + 3, "("))
            return;
        const Items columns = items(m_begin + 4);
        const std::vector<bool> which = missing(columns);
        drop(columns, which);
        size_t i = columns.back().second + 1;
        if (isWord(i, "SELECT"))
            drop(items(i + 1), which);
        while (isWord(i, "VALUES") || isSign(i, ",")) {
            const Items values = items(i + 2);
            drop(values, which);
            i = values.back().second + 1;
        }
    }

    /// Each with the comma before it; those at the front with the one behind.
    void drop(const Items &all, const std::vector<bool> &which) {
        bool kept = false;
        for (size_t k = 0; k < all.size() && k < which.size(); ++k) {
            if (!which[k]) {
                kept = true;
                continue;
            }
            const size_t from = kept ? all[k].first - 1 : all[k].first;
            const size_t to = !kept && k + 1 < all.size() ? all[k].second + 1 : all[k].second;
            edit(m_tokens[from].at, m_tokens[to - 1].end(), {});
            std::fill(m_dropped.begin() + qsizetype(from), m_dropped.begin() + qsizetype(to), true);
        }
    }

    const QByteArray &m_sql;
    const std::vector<TheirColumn> &m_columns;
    std::vector<SqlToken> m_tokens;
    size_t m_begin = 0, m_end = 0;               ///< the statement's tokens
    std::map<std::string, std::string> m_tables; ///< and aliases
    std::string m_firstTable;
    bool m_severalTables = false;
    std::vector<bool> m_dropped;
    Edits m_edits;
};

} // namespace

QByteArray withTheirNames(const QByteArray &sql, const std::vector<TheirColumn> &columns) {
    return Renaming(sql, columns).renamed();
}
