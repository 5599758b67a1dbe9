#pragma once

#include <QString>
#include <array>
#include <memory>
#include <string_view>
#include <unicode/coll.h>

/// Order and equality of texts like the server's collation Japanese_CI_AS: case, width and kana kind are
/// ignored, voiced marks are not, nor do blanks at the end count.
class JapaneseCollator {
public:
    JapaneseCollator();

    /// Whether the collation data were found; if not, compare must not be called.
    bool isValid() const { return m_collator != nullptr; }

    /// Less than, equal to or greater than 0; both texts are UTF-8.
    int compare(std::string_view a, std::string_view b) const;

private:
    int compareSlowly(std::string_view a, std::string_view b) const;

    std::unique_ptr<icu::Collator> m_collator;
    /// Rank of each printable ASCII character, the collator's own order; 0 sends a text to the collator.
    std::array<unsigned char, 256> m_rank = {};
};

/// A LIKE pattern that compares like the server's Japanese collation, and as searches do: case, width, kana
/// kind and the ways of writing a name's character are ignored. % stands for any text, _ for one character;
/// full-width ％ and ＿ stand for themselves.
class LikePattern {
public:
    /// @param escape character that takes the next one's meaning away; null: none
    explicit LikePattern(const QString &pattern, QChar escape = {});

    bool matches(const QString &text) const;

private:
    bool matchesFolded(QStringView text) const;

    QString m_pattern;   ///< folded; wildcards are noncharacters
    QString m_contained; ///< of a pattern `%text%`
};
