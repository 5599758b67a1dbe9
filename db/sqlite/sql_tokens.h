#pragma once

#include <QString>
#include <vector>

/// A piece of SQL text. Joined in order, the pieces are the text again.
struct SqlToken {
    enum Kind { Space, Word, Number, Literal, QuotedName, Symbol };

    Kind kind;
    QString text;

    bool is(QStringView symbol) const { return kind == Symbol && text == symbol; }
    bool isWord(QStringView word) const {
        return kind == Word && text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool isName() const { return kind == Word || kind == QuotedName; }
    /// Without brackets or quotes.
    QString name() const { return kind == QuotedName ? text.mid(1, text.size() - 2) : text; }
};

/// Takes SQL text apart; comments count as space. An unclosed literal runs to the end.
std::vector<SqlToken> sqlTokens(const QString &sql);

/// The next and the previous token that is no space and not emptied; the number of tokens when there is none.
size_t nextSolid(const std::vector<SqlToken> &tokens, size_t at);
size_t previousSolid(const std::vector<SqlToken> &tokens, size_t at);

/// The bracket that belongs to the one at `at`; the last token, or the first, when there is none.
size_t closing(const std::vector<SqlToken> &tokens, size_t at);
size_t opening(const std::vector<SqlToken> &tokens, size_t at);

/// Where the SELECT at `at` ends: its closing bracket, a UNION, a semicolon or the end.
size_t endOfSelect(const std::vector<SqlToken> &tokens, size_t at);
