#include "db/sqlite/dialect.h"

#include "db/sqlite/sql_words.h"

#include <algorithm>
#include <optional>
#include <string>

namespace {

using Kind = SqlToken::Kind;

/// A SELECT with TOP whose LIMIT is still to be written.
struct Top {
    size_t selectAt;
    std::string count;
};

/// CONVERT(type, value, style) or CAST(value AS type).
struct Conversion {
    size_t headAt; ///< the function's name
    size_t valueAt;
    ConversionTarget target = ConversionTarget::Text;
    std::string length = {};             ///< of VARCHAR(n); empty: unlimited
    std::optional<size_t> valueEnd = {}; ///< where `, style` or `AS type` begins
    bool styled = false;                 ///< has a style
};

/// What lies between two parentheses, between CASE and END, or at the top of a statement.
struct Frame {
    bool isCase = false;
    bool isSelect = false;
    bool compound = false; ///< behind a UNION
    std::optional<Top> top = {};
    std::optional<size_t> orderAt = {}; ///< end of the token before ORDER BY
    std::optional<Conversion> conversion = {};

    // The chain of + that is being read.
    std::vector<size_t> plusAt = {};
    ValueType chain = ValueType::Unknown;

    std::optional<ValueType> fixed = {};   ///< type of a function's value, whatever its arguments are
    ValueType values = ValueType::Unknown; ///< of the chains that give the frame its value
    bool chainIsValue = true;              ///< false in the conditions of a CASE
};

class Rewriter {
public:
    explicit Rewriter(const QByteArray &sql)
        : m_sql(sql), m_tokens(sqlTokens({sql.constData(), size_t(sql.size())})), m_frames(1) {}

    QByteArray rewritten() {
        for (m_i = 0; m_i < m_tokens.size(); ++m_i)
            pass(m_tokens[m_i]);
        while (m_frames.size() > 1)
            leave(lastEnd());
        finish(frame(), lastEnd());
        return applied();
    }

private:
    struct Edit {
        size_t at;
        size_t length;
        std::string text;
    };

    Frame &frame() { return m_frames.back(); }
    const SqlToken *ahead(size_t n) const { return m_i + n < m_tokens.size() ? &m_tokens[m_i + n] : nullptr; }
    bool signAhead(size_t n, std::string_view sign) const { return ahead(n) && ahead(n)->isSign(sign); }
    /// End of the token before the current one.
    size_t lastEnd() const { return m_i == 0 ? 0 : m_tokens[std::min(m_i, m_tokens.size()) - 1].end(); }
    void edit(size_t at, size_t length, std::string text) {
        m_edits.push_back({at, length, std::move(text)});
    }

    void pass(const SqlToken &token) {
        switch (token.kind) {
        case Kind::Number:
            return operand(ValueType::Number);
        case Kind::Text:
            if (token.text[0] != '\'')
                edit(token.at, 1, {});
            return operand(ValueType::Text);
        case Kind::Sign:
            return passSign(token);
        case Kind::Word:
            return passWord(token);
        }
    }

    void operand(ValueType type) {
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
        f.plusAt.clear();
        f.chain = ValueType::Unknown;
        m_afterOperand = false;
    }

    void passSign(const SqlToken &token) {
        if (token.text == "(")
            return enter({});
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
        if (token.text != "," || !f.conversion || f.conversion->valueEnd)
            return;
        f.conversion->valueEnd = lastEnd();
        f.conversion->styled = true;
    }

    void passWord(const SqlToken &token) {
        if (token.isWord("CASE")) {
            if (m_afterOperand)
                endChain();
            m_frames.push_back({.isCase = true, .chainIsValue = false});
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
        while (signAhead(1, ".") && ahead(2))
            m_i += 2;
        const SqlToken &name = m_tokens[m_i];
        operand(name.kind == Kind::Word ? typeOfColumn(name.text) : ValueType::Unknown);
    }

    void passKeyword(const SqlToken &token) {
        endChain();
        Frame &f = frame();
        if (token.isWord("SELECT"))
            passSelect(token);
        else if (token.isWord("UNION") || token.isWord("EXCEPT") || token.isWord("INTERSECT"))
            passUnion(f);
        else if (token.isWord("ORDER") && isByAhead())
            f.orderAt = lastEnd();
        else if (token.isWord("AS") && f.conversion && !f.conversion->valueEnd && ahead(1))
            passCastType(*f.conversion);
        if (f.isCase)
            f.chainIsValue = token.isWord("THEN") || token.isWord("ELSE");
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
        edit(f.top->selectAt, 0, "SELECT * FROM (");
        edit(end, 0, " LIMIT " + f.top->count + ")");
        f.top.reset();
    }

    void passCall(const SqlToken &name) {
        if (m_afterOperand)
            endChain();
        Frame called;
        if (!hasTypeOfArguments(name))
            called.fixed = typeOfFunction(name);
        if (name.isWord("ISNULL"))
            edit(name.at, name.text.size(), "ifnull");
        else if (name.isWord("LEFT") || name.isWord("RIGHT"))
            edit(name.at, name.text.size(), name.isWord("LEFT") ? "left_text" : "right_text");
        else if (name.isWord("CAST"))
            called.conversion = Conversion{.headAt = name.at, .valueAt = ahead(1)->end()};
        else if (name.isWord("CONVERT") && passConvertHead(called, name))
            return enter(std::move(called));
        ++m_i; // the parenthesis
        enter(std::move(called));
    }

    /// Past `CONVERT(type(length),`; false when it is not of that form.
    bool passConvertHead(Frame &called, const SqlToken &name) {
        const SqlToken *type = ahead(2);
        if (!type || type->kind != Kind::Word)
            return false;
        size_t n = 3;
        std::string length;
        if (signAhead(n, "(") && ahead(n + 1)) {
            length = ahead(n + 1)->kind == Kind::Number ? std::string(ahead(n + 1)->text) : std::string();
            while (ahead(n) && !signAhead(n, ")"))
                ++n;
            ++n;
        }
        if (!signAhead(n, ","))
            return false;
        called.conversion = Conversion{name.at, ahead(n)->end(), conversionTarget(*type), length};
        m_i += n;
        return true;
    }

    void passCastType(Conversion &cast) {
        cast.target = conversionTarget(*ahead(1));
        cast.valueEnd = lastEnd();
        // The rest up to the parenthesis is the type.
        if (cast.target == ConversionTarget::Text && signAhead(2, "(") && ahead(3) &&
            ahead(3)->kind == Kind::Number)
            cast.length = ahead(3)->text;
        while (ahead(1) && !signAhead(1, ")"))
            m_i += signAhead(2, "(") ? skipBracket(2) : 1;
    }

    /// Number of tokens from the current one to the parenthesis that closes the one `n` ahead.
    size_t skipBracket(size_t n) const {
        while (ahead(n) && !signAhead(n, ")"))
            ++n;
        return n;
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
        operand(typeOf(left));
    }

    static ValueType typeOf(const Frame &f) {
        if (f.conversion)
            return f.conversion->target == ConversionTarget::Text      ? ValueType::Text
                   : f.conversion->target == ConversionTarget::Integer ? ValueType::Number
                   : f.conversion->target == ConversionTarget::Number  ? ValueType::Number
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
        if (f.top && f.compound)
            wrapTop(f, f.orderAt.value_or(end));
        else if (f.top)
            edit(end, 0, " LIMIT " + f.top->count);
    }

    /// @param value type of what is converted
    /// @param end where the conversion's last argument ends
    void finishConversion(const Conversion &c, ValueType value, size_t end) {
        const bool convert = m_sql[qsizetype(c.headAt) + 1] == 'O' || m_sql[qsizetype(c.headAt) + 1] == 'o';
        if (!convert && c.target != ConversionTarget::Date && c.target != ConversionTarget::DateTime)
            return; // SQLite's own CAST does
        const size_t valueEnd = c.valueEnd.value_or(end);
        const bool asDate = c.target == ConversionTarget::Date ||
                            (c.target == ConversionTarget::Text && c.styled && value == ValueType::Unknown);
        std::string head = asDate ? "convert_date(" : "CAST(";
        std::string tail = c.target == ConversionTarget::Integer  ? " AS INTEGER"
                           : c.target == ConversionTarget::Number ? " AS NUMERIC"
                                                                  : " AS TEXT";
        if (asDate)
            tail = c.target == ConversionTarget::Date
                       ? ", 111"
                       : std::string(m_sql.constData() + valueEnd, end - valueEnd);
        if (c.target == ConversionTarget::Text && !c.length.empty()) {
            head = "substr(" + head;
            tail += "), 1, " + c.length;
        }
        edit(c.headAt, c.valueAt - c.headAt, head);
        edit(valueEnd, end - valueEnd, tail);
    }

    QByteArray applied() {
        if (m_edits.empty())
            return m_sql;
        std::ranges::stable_sort(m_edits, {}, &Edit::at);
        QByteArray out;
        out.reserve(m_sql.size() + 64);
        size_t from = 0;
        for (const Edit &e : m_edits) {
            if (e.at < from)
                continue;
            out.append(m_sql.constData() + from, qsizetype(e.at - from));
            out.append(e.text.data(), qsizetype(e.text.size()));
            from = e.at + e.length;
        }
        return out.append(m_sql.constData() + from, m_sql.size() - qsizetype(from));
    }

    QByteArray m_sql;
    std::vector<SqlToken> m_tokens;
    std::vector<Frame> m_frames;
    std::vector<Edit> m_edits;
    size_t m_i = 0;
    bool m_afterOperand = false;
};

} // namespace

QByteArray embeddedDialect(const QByteArray &sql) {
    return Rewriter(sql).rewritten();
}
