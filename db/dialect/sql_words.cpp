#include "db/dialect/sql_words.h"

#include <algorithm>
#include <array>

namespace {

constexpr bool isCapital(char c) {
    return (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

template <size_t n> bool isAnyOf(const SqlToken &token, const std::array<std::string_view, n> &words) {
    return std::ranges::any_of(words, [&](std::string_view word) { return token.isWord(word); });
}

} // namespace

ValueType combined(ValueType a, ValueType b) {
    if (a == ValueType::Number || b == ValueType::Number)
        return ValueType::Number;
    return a == ValueType::Text || b == ValueType::Text ? ValueType::Text : ValueType::Unknown;
}

ValueType typeOfColumn(std::string_view name) {
    if (name.size() > 2 && name[0] == '[')
        name = name.substr(1, name.size() - 2);
    if (name.starts_with("cs") && name.size() > 2 && isCapital(name[2]))
        return ValueType::Text;
    if (name.size() < 2 || !isCapital(name[1]))
        return ValueType::Unknown;
    if (name[0] == 'c' || name[0] == 's')
        return ValueType::Text;
    return std::string_view("inmd").find(name[0]) != std::string_view::npos ? ValueType::Number
                                                                            : ValueType::Unknown;
}

bool isKeyword(const SqlToken &token) {
    // Sorted, so that a look at the first letter mostly suffices.
    static constexpr std::array<std::string_view, 52> keywords = {
        "ALL",    "AND",       "AS",       "ASC",    "BETWEEN", "BY",        "CREATE", "CROSS", "DEFAULT",
        "DELETE", "DESC",      "DISTINCT", "ELSE",   "ESCAPE",  "EXCEPT",    "EXISTS", "FROM",  "FULL",
        "GROUP",  "HAVING",    "IN",       "INNER",  "INSERT",  "INTERSECT", "INTO",   "IS",    "JOIN",
        "LEFT",   "LIKE",      "LIMIT",    "NOT",    "OFFSET",  "ON",        "OR",     "ORDER", "OUTER",
        "OVER",   "PARTITION", "PRIMARY",  "RIGHT",  "SELECT",  "SET",       "TABLE",  "THEN",  "TOP",
        "UNION",  "UNIQUE",    "UPDATE",   "VALUES", "WHEN",    "WHERE",     "WITH"};
    const char first =
        token.text[0] >= 'a' && token.text[0] <= 'z' ? char(token.text[0] - 'a' + 'A') : token.text[0];
    const auto *keyword =
        std::ranges::lower_bound(keywords, first, {}, [](std::string_view k) { return k[0]; });
    while (keyword != keywords.end() && (*keyword)[0] == first)
        if (token.isWord(*keyword++))
            return true;
    return false;
}

ValueType typeOfFunction(const SqlToken &name) {
    static constexpr std::array<std::string_view, 11> texts = {"SUBSTRING", "SUBSTR",  "LEFT", "RIGHT",
                                                               "LTRIM",     "RTRIM",   "TRIM", "UPPER",
                                                               "LOWER",     "REPLACE", "CHAR"};
    static constexpr std::array<std::string_view, 9> numbers = {"LEN", "CHARINDEX", "COUNT", "SUM",    "AVG",
                                                                "ABS", "ROUND",     "FLOOR", "CEILING"};
    if (isAnyOf(name, texts))
        return ValueType::Text;
    return isAnyOf(name, numbers) ? ValueType::Number : ValueType::Unknown;
}

bool hasTypeOfArguments(const SqlToken &name) {
    static constexpr std::array<std::string_view, 5> functions = {"ISNULL", "COALESCE", "NULLIF", "MAX",
                                                                  "MIN"};
    return isAnyOf(name, functions);
}

ConversionTarget conversionTarget(const SqlToken &type) {
    static constexpr std::array<std::string_view, 5> integers = {"INT", "INTEGER", "SMALLINT", "BIGINT",
                                                                 "TINYINT"};
    static constexpr std::array<std::string_view, 6> numbers = {"NUMERIC", "DECIMAL", "MONEY",
                                                                "FLOAT",   "REAL",    "BIT"};
    if (isAnyOf(type, integers))
        return ConversionTarget::Integer;
    if (isAnyOf(type, numbers))
        return ConversionTarget::Number;
    if (type.isWord("DATE"))
        return ConversionTarget::Date;
    return type.isWord("DATETIME") || type.isWord("DATETIME2") ? ConversionTarget::DateTime
                                                               : ConversionTarget::Text;
}
