#include "db/dialect/sql_types.h"

#include <array>
#include <optional>

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 13> postgresTypes = {
    {{"NVARCHAR", "bpchar"},
     {"VARCHAR", "bpchar"},
     {"NCHAR", "bpchar"},
     {"CHAR", "bpchar"},
     {"NTEXT", "text"},
     {"TEXT", "text"},
     {"DATETIME", "timestamp(3)"},
     {"DATETIME2", "timestamp(3)"},
     {"SMALLDATETIME", "timestamp(3)"},
     {"MONEY", "numeric(19, 4)"},
     {"TINYINT", "smallint"},
     {"BIT", "smallint"},
     {"FLOAT", "double precision"}}};

bool isSign(const std::vector<SqlToken> &tokens, size_t at, std::string_view sign) {
    return at < tokens.size() && tokens[at].isSign(sign);
}

bool isWord(const std::vector<SqlToken> &tokens, size_t at, std::string_view word) {
    return at < tokens.size() && tokens[at].isWord(word);
}

bool isName(const std::vector<SqlToken> &tokens, size_t at) {
    return at < tokens.size() && tokens[at].kind == SqlToken::Kind::Word;
}

/// What the definition of a column does not begin with.
bool beginsConstraint(const SqlToken &token) {
    return token.isWord("CONSTRAINT") || token.isWord("PRIMARY") || token.isWord("UNIQUE") ||
           token.isWord("FOREIGN") || token.isWord("CHECK");
}

/// The first definition of a statement that defines columns; nothing for another one.
std::optional<size_t> firstDefinition(const std::vector<SqlToken> &tokens, size_t statement) {
    const bool alters = isWord(tokens, statement, "ALTER");
    if ((!alters && !isWord(tokens, statement, "CREATE")) || !isWord(tokens, statement + 1, "TABLE"))
        return std::nullopt;
    for (size_t i = statement + 2; i < tokens.size() && !tokens[i].isSign(";"); ++i)
        if (alters ? tokens[i].isWord("ADD") : tokens[i].isSign("("))
            return i + 1;
    return std::nullopt;
}

std::string lengthCheck(std::string_view column, const SqlType &type) {
    const std::string length = type.length();
    if (length.empty() || postgresType(type) != "bpchar")
        return {};
    const std::string name = postgresName(column);
    const bool national = type.name[0] == 'N' || type.name[0] == 'n';
    // Bytes of UTF-8 are never fewer, and counted at once.
    return " CHECK (octet_length(" + name + ") <= " + length + " OR " +
           (national ? "utf16_units(" : "bytes932(") + name + ") <= " + length + ")";
}

/// Types bind nothing in SQLite. Other programs that open the file have only its own functions.
std::string embeddedCheck(std::string_view column, const SqlType &type) {
    const std::string name(column);
    if (type.target == ConversionTarget::Text && !type.length().empty())
        return " CHECK (length(" + name + ") <= " + type.length() + ")";
    if (type.target != ConversionTarget::DateTime)
        return {};
    const std::string day = "substr(" + name + ", 1, 10)";
    return " CHECK (" + name + " IS NULL OR strftime('%Y/%m/%d', replace(" + day +
           ", '/', '-'), '+0 days') IS " + day + ")";
}

/// One definition; gives the token that ends it.
size_t writeDefinition(const std::vector<SqlToken> &tokens, size_t at, bool postgres, Edits &edits) {
    std::string check;
    if (isName(tokens, at) && isName(tokens, at + 1) && !beginsConstraint(tokens[at])) {
        const SqlType type = sqlTypeAt(tokens, at + 1);
        const size_t from = tokens[at + 1].at;
        if (postgres)
            edits.replace(from, tokens[type.next - 1].end() - from, postgresType(type));
        else if (equalsUpper(type.arguments, "MAX")) // no number, and so no length there
            edits.replace(from, tokens[type.next - 1].end() - from, std::string(type.name));
        check = postgres ? lengthCheck(tokens[at].text, type) : embeddedCheck(tokens[at].text, type);
        at = type.next;
    }
    for (int depth = 0; at < tokens.size(); ++at) {
        if (depth == 0 && (tokens[at].isSign(",") || tokens[at].isSign(")") || tokens[at].isSign(";")))
            break;
        depth += tokens[at].isSign("(") ? 1 : tokens[at].isSign(")") ? -1 : 0;
    }
    if (!check.empty())
        edits.close(tokens[at - 1].end(), check);
    return at;
}

} // namespace

std::string SqlType::length() const {
    const bool digits = arguments.find_first_not_of("0123456789") == std::string_view::npos;
    return digits ? std::string(arguments) : std::string();
}

SqlType sqlTypeAt(const std::vector<SqlToken> &tokens, size_t at) {
    const SqlToken &word = tokens[at];
    SqlType type{.name = word.text, .target = conversionTarget(word), .next = at + 1};
    if (!isSign(tokens, at + 1, "("))
        return type;
    size_t last = at + 1;
    while (last < tokens.size() && !tokens[last].isSign(")"))
        ++last;
    if (last == tokens.size())
        return type;
    // Tokens are views of one text.
    const char *from = tokens[at + 1].text.data() + 1;
    type.arguments = {from, size_t(tokens[last].text.data() - from)};
    type.next = last + 1;
    return type;
}

std::string postgresName(std::string_view name) {
    if (name[0] != '[' && name[0] != '"')
        return std::string(name);
    std::string folded = "\"";
    for (const char c : name.substr(1, name.size() - std::min<size_t>(name.size(), 2)))
        folded += c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    return folded + '"';
}

std::string postgresType(const SqlType &type) {
    if (equalsUpper(type.arguments, "MAX"))
        return "text";
    for (const auto &[server, here] : postgresTypes)
        if (equalsUpper(type.name, server))
            return std::string(here);
    return std::string(type.name) +
           (type.arguments.empty() ? std::string() : "(" + std::string(type.arguments) + ")");
}

void writeColumns(const std::vector<SqlToken> &tokens, bool postgres, Edits &edits) {
    for (size_t at = 0; at < tokens.size(); ++at) {
        if (at > 0 && !tokens[at - 1].isSign(";"))
            continue;
        std::optional<size_t> definition = firstDefinition(tokens, at);
        while (definition) {
            at = writeDefinition(tokens, *definition, postgres, edits);
            definition = isSign(tokens, at, ",") ? std::optional(at + 1) : std::nullopt;
        }
    }
}
