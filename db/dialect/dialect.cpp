#include "db/dialect/dialect.h"

#include "db/dialect/edits.h"
#include "db/dialect/sql_types.h"
#include "db/dialect/sql_words.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>

namespace {

using Kind = SqlToken::Kind;

/// How an engine differs from SQL Server.
struct Target {
    using Renamed = std::pair<std::string_view, std::string_view>;
    std::span<const Renamed> functions;
    std::string_view partOpens, partCloses; ///< around a part of a compound that has a LIMIT
    /// LIKE is a function there, Nulls come last, names fold and types are called otherwise.
    bool isPostgres;
};

constexpr Target::Renamed embeddedFunctions[] = {
    {"ISNULL", "ifnull"}, {"LEFT", "left_text"}, {"RIGHT", "right_text"}};
// Its own replace refuses a collation that ignores anything.
constexpr Target::Renamed postgresFunctions[] = {{"ISNULL", "coalesce"}, {"REPLACE", "replace_text"}};
constexpr Target embedded = {embeddedFunctions, "SELECT * FROM (", ")", false};
constexpr Target postgres = {postgresFunctions, "(", ")", true};

/// A SELECT with TOP whose LIMIT is still to be written.
struct Top {
    size_t selectAt;
    std::string count;
};

/// CONVERT(type, value, style) or CAST(value AS type).
struct Conversion {
    size_t headAt; ///< the function's name
    size_t valueAt;
    SqlType type = {};
    std::optional<size_t> valueEnd = {}; ///< where `, style` or `AS type` begins
    bool styled = false;                 ///< has a style
};

/// What lies between two parentheses, between CASE and END, or at the top of a statement.
struct Frame {
    size_t at = 0; ///< where it begins, the name of a called function included
    bool isCase = false;
    bool isSelect = false;
    bool compound = false; ///< behind a UNION
    std::optional<Top> top = {};
    std::optional<size_t> orderAt = {}; ///< end of the token before ORDER BY
    std::optional<Conversion> conversion = {};
    bool inOrder = false;    ///< behind ORDER BY
    bool descending = false; ///< what is ordered by now
    bool inLike = false;     ///< in what is behind LIKE

    // The chain of + that is being read.
    std::optional<size_t> chainAt = {}; ///< where it begins
    std::vector<size_t> plusAt = {};
    ValueType chain = ValueType::Unknown;

    std::optional<ValueType> fixed = {};   ///< type of a function's value, whatever its arguments are
    ValueType values = ValueType::Unknown; ///< of the chains that give the frame its value
    bool chainIsValue = true;              ///< false in the conditions of a CASE
};

class Rewriter {
public:
    Rewriter(const Target &target, const QByteArray &sql)
        : m_target(target),
          m_sql(sql),
          m_tokens(sqlTokens({sql.constData(), size_t(sql.size())})),
          m_frames(1) {}

    QByteArray rewritten() {
        if (m_target.isPostgres)
            foldNames();
        writeColumns(m_tokens, m_target.isPostgres, m_edits);
        for (m_i = 0; m_i < m_tokens.size(); ++m_i)
            pass(m_tokens[m_i]);
        while (m_frames.size() > 1)
            leave(lastEnd());
        finish(frame(), lastEnd());
        return m_edits.applied(m_sql);
    }

private:
    Frame &frame() { return m_frames.back(); }
    const SqlToken *ahead(size_t n) const { return m_i + n < m_tokens.size() ? &m_tokens[m_i + n] : nullptr; }
    bool signAhead(size_t n, std::string_view sign) const { return ahead(n) && ahead(n)->isSign(sign); }
    /// End of the token before the current one.
    size_t lastEnd() const { return m_i == 0 ? 0 : m_tokens[std::min(m_i, m_tokens.size()) - 1].end(); }
    void edit(size_t at, size_t length, std::string text) { m_edits.replace(at, length, std::move(text)); }

    /// Plain names fold to lower case on the server, so [Name] and "Name" do, too.
    void foldNames() {
        for (const SqlToken &token : m_tokens)
            if (token.kind == Kind::Word && (token.text[0] == '[' || token.text[0] == '"'))
                edit(token.at, token.text.size(), postgresName(token.text));
    }

    void pass(const SqlToken &token) {
        switch (token.kind) {
        case Kind::Number:
            return operand(token.at, ValueType::Number);
        case Kind::Text:
            if (token.text[0] == 'N' || token.text[0] == 'n')
                edit(token.at, 1, {});
            return operand(token.at, ValueType::Text);
        case Kind::Sign:
            return passSign(token);
        case Kind::Word:
            return passWord(token);
        }
    }

    void operand(size_t at, ValueType type) {
        if (!frame().chainAt)
            frame().chainAt = at;
        frame().chain = combined(frame().chain, type);
        m_afterOperand = true;
    }

    void endChain() {
        Frame &f = frame();
        if (f.chain == ValueType::Text)
            for (const size_t at : f.plusAt)
                edit(at, 1, "||");
        if (f.chainIsValue)
            f.values = combined(f.values, f.chain);
        if (f.inLike)
            m_edits.close(lastEnd(), ")");
        f.inLike = false;
        f.chainAt.reset();
        f.plusAt.clear();
        f.chain = ValueType::Unknown;
        m_afterOperand = false;
    }

    void passSign(const SqlToken &token) {
        if (token.text == "(")
            return enter({.at = token.at});
        if (token.text == ")")
            return leave(lastEnd());
        if (token.text == "+" && m_afterOperand) {
            frame().plusAt.push_back(token.at);
            m_afterOperand = false;
        } else if (std::string_view("-*/%").find(token.text) != std::string_view::npos) {
            // `*` without an operand before it stands for all columns.
            frame().chain = m_afterOperand ? ValueType::Number : frame().chain;
            m_afterOperand = !m_afterOperand && token.text == "*";
        } else if (token.text == ";") {
            while (m_frames.size() > 1)
                leave(lastEnd());
            finish(frame(), lastEnd());
            frame() = Frame();
        } else if (token.text != "+") {
            passSeparator(token);
        }
    }

    void passSeparator(const SqlToken &token) {
        endChain();
        Frame &f = frame();
        if (token.text == ",")
            endOrdered(f, lastEnd());
        if (token.text != "," || !f.conversion || f.conversion->valueEnd)
            return;
        f.conversion->valueEnd = lastEnd();
        f.conversion->styled = true;
    }

    void passWord(const SqlToken &token) {
        if (token.isWord("CASE")) {
            if (m_afterOperand)
                endChain();
            m_frames.push_back({.at = token.at, .isCase = true, .chainIsValue = false});
        } else if (token.isWord("END")) {
            if (frame().isCase)
                leave(lastEnd());
        } else if (token.isWord("COLLATE")) {
            ++m_i;
        } else if (signAhead(1, "(") &&
                   (!isKeyword(token) || token.isWord("LEFT") || token.isWord("RIGHT"))) {
            passCall(token);
        } else if (isKeyword(token)) {
            passKeyword(token);
        } else {
            passName();
        }
    }

    void passName() {
        // A word right behind an operand is its alias.
        if (m_afterOperand)
            endChain();
        const size_t from = m_tokens[m_i].at;
        while (signAhead(1, ".") && ahead(2))
            m_i += 2;
        const SqlToken &name = m_tokens[m_i];
        operand(from, name.kind == Kind::Word ? typeOfColumn(name.text) : ValueType::Unknown);
    }

    void passKeyword(const SqlToken &token) {
        if (m_target.isPostgres && passLike(token))
            return;
        endChain();
        Frame &f = frame();
        if (token.isWord("SELECT"))
            passSelect(token);
        else if (token.isWord("UNION") || token.isWord("EXCEPT") || token.isWord("INTERSECT"))
            passUnion(f);
        else if (token.isWord("ORDER") && isByAhead())
            beginOrder(f);
        else if (token.isWord("DESC"))
            f.descending = true;
        else if (token.isWord("LIMIT") || token.isWord("OFFSET"))
            endOrder(f, lastEnd());
        else if (token.isWord("AS") && f.conversion && !f.conversion->valueEnd && ahead(1))
            passCastType(*f.conversion);
        if (f.isCase)
            f.chainIsValue = token.isWord("THEN") || token.isWord("ELSE");
    }

    /// Takes LIKE, the NOT before it and the ESCAPE behind it; false for another word.
    bool passLike(const SqlToken &token) {
        Frame &f = frame();
        const bool negated = token.isWord("NOT") && ahead(1) && ahead(1)->isWord("LIKE");
        const bool begins = f.chainAt && (negated || token.isWord("LIKE"));
        if (!begins && !(f.inLike && token.isWord("ESCAPE")))
            return false;
        if (begins)
            m_edits.open(*f.chainAt, negated ? "NOT like_japanese(" : "like_japanese(");
        f.inLike = false; // another argument of it follows
        const size_t before = lastEnd();
        endChain();
        m_i += negated ? 1 : 0;
        edit(before, m_tokens[m_i].end() - before, ",");
        f.inLike = true;
        return true;
    }

    void beginOrder(Frame &f) {
        f.orderAt = lastEnd();
        f.inOrder = true;
        f.descending = false;
    }

    /// One of the things that are ordered by has been read. Null comes before all values.
    void endOrdered(Frame &f, size_t end) {
        if (m_target.isPostgres && f.inOrder)
            m_edits.close(end, f.descending ? " NULLS LAST" : " NULLS FIRST");
        f.descending = false;
    }

    void endOrder(Frame &f, size_t end) {
        endOrdered(f, end);
        f.inOrder = false;
    }

    bool isByAhead() const { return ahead(1) && ahead(1)->isWord("BY"); }

    void passSelect(const SqlToken &select) {
        frame().isSelect = true;
        size_t n = 1;
        while (ahead(n) && (ahead(n)->isWord("DISTINCT") || ahead(n)->isWord("ALL")))
            ++n;
        if (!ahead(n) || !ahead(n)->isWord("TOP"))
            return;
        const bool bracketed = signAhead(n + 1, "(");
        const SqlToken *count = ahead(n + (bracketed ? 2 : 1));
        if (!count || count->kind != Kind::Number || (bracketed && !signAhead(n + 3, ")")))
            return;
        const size_t last = n + (bracketed ? 3 : 1);
        edit(ahead(n)->at, ahead(last)->end() - ahead(n)->at, {});
        frame().top = Top{select.at, std::string(count->text)};
        m_i += last;
    }

    // LIMIT counts for a whole compound, TOP for one SELECT of it: those become sub-selects.
    void passUnion(Frame &f) {
        wrapTop(f, lastEnd());
        f.compound = true;
        f.orderAt.reset();
    }

    void wrapTop(Frame &f, size_t end) {
        if (!f.top)
            return;
        m_edits.open(f.top->selectAt, std::string(m_target.partOpens));
        m_edits.close(end, " LIMIT " + f.top->count + std::string(m_target.partCloses));
        f.top.reset();
    }

    void passCall(const SqlToken &name) {
        if (m_afterOperand)
            endChain();
        Frame called{.at = name.at};
        if (!hasTypeOfArguments(name))
            called.fixed = typeOfFunction(name);
        for (const auto &[server, here] : m_target.functions)
            if (name.isWord(server))
                edit(name.at, name.text.size(), std::string(here));
        if (name.isWord("CAST"))
            called.conversion = Conversion{.headAt = name.at, .valueAt = ahead(1)->end()};
        else if (name.isWord("CONVERT") && passConvertHead(called, name))
            return enter(std::move(called));
        ++m_i; // the parenthesis
        enter(std::move(called));
    }

    /// Past `CONVERT(type(length),`; false when it is not of that form.
    bool passConvertHead(Frame &called, const SqlToken &name) {
        if (!ahead(2) || ahead(2)->kind != Kind::Word)
            return false;
        const SqlType type = sqlTypeAt(m_tokens, m_i + 2);
        if (type.next >= m_tokens.size() || !m_tokens[type.next].isSign(","))
            return false;
        called.conversion = Conversion{.headAt = name.at, .valueAt = m_tokens[type.next].end(), .type = type};
        m_i = type.next;
        return true;
    }

    void passCastType(Conversion &cast) {
        cast.type = sqlTypeAt(m_tokens, m_i + 1);
        cast.valueEnd = lastEnd();
        // The rest up to the parenthesis is the type.
        m_i = cast.type.next - 1;
        while (ahead(1) && !signAhead(1, ")"))
            ++m_i;
    }

    void enter(Frame inner) {
        if (m_afterOperand)
            endChain();
        m_frames.push_back(std::move(inner));
        m_afterOperand = false;
    }

    void leave(size_t end) {
        if (m_frames.size() == 1) // one closing sign too many
            return endChain();
        finish(frame(), end);
        const Frame left = std::move(m_frames.back());
        m_frames.pop_back();
        operand(left.at, typeOf(left));
    }

    static ValueType typeOf(const Frame &f) {
        if (f.conversion)
            return f.conversion->type.target == ConversionTarget::Text      ? ValueType::Text
                   : f.conversion->type.target == ConversionTarget::Integer ? ValueType::Number
                   : f.conversion->type.target == ConversionTarget::Number  ? ValueType::Number
                                                                            : ValueType::Unknown;
        return f.isSelect ? ValueType::Unknown : f.fixed.value_or(f.values);
    }

    void finish(Frame &f, size_t end) {
        // A style is no part of the value that is converted.
        const bool styled = f.conversion && f.conversion->styled;
        const ValueType value = styled ? f.values : combined(f.values, f.chain);
        endChain();
        if (f.conversion)
            finishConversion(*f.conversion, value, end);
        endOrder(f, end);
        if (f.top && f.compound)
            wrapTop(f, f.orderAt.value_or(end));
        else if (f.top)
            m_edits.close(end, " LIMIT " + f.top->count);
    }

    /// @param value type of what is converted
    /// @param end where the conversion's last argument ends
    void finishConversion(const Conversion &c, ValueType value, size_t end) {
        using enum ConversionTarget;
        const bool convert = m_sql[qsizetype(c.headAt) + 1] == 'O' || m_sql[qsizetype(c.headAt) + 1] == 'o';
        const bool isDate = c.type.target == Date || c.type.target == DateTime;
        if (!convert && !isDate && !m_target.isPostgres)
            return; // SQLite's own CAST does
        const size_t valueEnd = c.valueEnd.value_or(end);
        const bool datesAreTexts = c.type.target == Date && !m_target.isPostgres;
        const bool isStyled = c.type.target == Text && c.styled && value == ValueType::Unknown;
        std::string head = datesAreTexts || isStyled ? "convert_date(" : "CAST(";
        std::string tail = datesAreTexts ? ", 111"
                           : isStyled    ? std::string(m_sql.constData() + valueEnd, end - valueEnd)
                                         : " AS " + castType(c.type);
        if (c.type.target == Text && !c.type.length().empty()) {
            head = "substr(" + head;
            tail += "), 1, " + c.type.length();
            if (m_target.isPostgres) { // of the type that columns have: an index serves no other
                head = "CAST(" + head;
                tail += ") AS " + castType(c.type);
            }
        }
        edit(c.headAt, c.valueAt - c.headAt, head);
        edit(valueEnd, end - valueEnd, tail);
    }

    std::string castType(const SqlType &type) const {
        if (m_target.isPostgres)
            return postgresType(type);
        return type.target == ConversionTarget::Integer  ? "INTEGER"
               : type.target == ConversionTarget::Number ? "NUMERIC"
                                                         : "TEXT";
    }

    const Target &m_target;
    QByteArray m_sql;
    std::vector<SqlToken> m_tokens;
    std::vector<Frame> m_frames;
    Edits m_edits;
    size_t m_i = 0;
    bool m_afterOperand = false;
};

} // namespace

QByteArray inDialect(SqlDialect dialect, const QByteArray &sql) {
    if (dialect == SqlDialect::SqlServer)
        return sql;
    return Rewriter(dialect == SqlDialect::PostgreSql ? postgres : embedded, sql).rewritten();
}

QString inDialect(SqlDialect dialect, const QString &sql) {
    return dialect == SqlDialect::SqlServer ? sql : QString::fromUtf8(inDialect(dialect, sql.toUtf8()));
}
