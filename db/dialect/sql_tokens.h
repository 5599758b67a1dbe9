#pragma once

#include <string_view>
#include <vector>

/// One word, literal or sign of an SQL statement; blanks and comments lie between tokens.
struct SqlToken {
    enum class Kind {
        Word,   ///< name or keyword, also as [name] and "name"
        Number, ///< without a sign
        Text,   ///< '…' or N'…', and $$…$$ around a function's body
        Sign    ///< anything else, one or two characters
    };

    Kind kind;
    size_t at; ///< offset in the statement, in bytes
    std::string_view text;

    size_t end() const { return at + text.size(); }
    /// A keyword or unquoted name, ASCII case ignored; `upper` is in capitals.
    bool isWord(std::string_view upper) const;
    bool isSign(std::string_view sign) const { return kind == Kind::Sign && text == sign; }
};

/// Takes UTF-8 SQL text apart. Never fails: a literal without end reaches to the end of the text.
std::vector<SqlToken> sqlTokens(std::string_view sql);

/// ASCII case ignored; `upper` is in capitals.
bool equalsUpper(std::string_view text, std::string_view upper);
