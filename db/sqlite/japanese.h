#pragma once

#include <QString>
#include <memory>

struct UCollator;

/// Compares texts as the server's collation Japanese_CI_AS does: case, width and kana kind are ignored,
/// voiced and unvoiced kana stay apart.
class JapaneseCollator {
public:
    JapaneseCollator();
    ~JapaneseCollator();
    JapaneseCollator(const JapaneseCollator &) = delete;
    JapaneseCollator &operator=(const JapaneseCollator &) = delete;

    /// Negative, 0 or positive; both texts in UTF-8, lengths in bytes.
    int compare(const char *left, int leftLength, const char *right, int rightLength) const;

private:
    UCollator *m_collator;
};

/// A LIKE pattern with % and _, ready for many texts.
class LikePattern {
public:
    explicit LikePattern(const QString &pattern);
    bool matches(const QString &text) const;

private:
    QString m_pattern; ///< folded, with stand-ins for the wildcards
};
