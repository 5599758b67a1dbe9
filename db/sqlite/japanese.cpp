#include "db/sqlite/japanese.h"

#include "app/base/text.h"

#include <algorithm>
#include <unicode/ucol.h>

namespace {

// Code points that no text may contain stand for % and _, so that a full-width ％ is no wildcard.
constexpr QChar anyText(0xFDD0);
constexpr QChar anyOne(0xFDD1);

bool isPlain(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

} // namespace

JapaneseCollator::JapaneseCollator() {
    UErrorCode status = U_ZERO_ERROR;
    m_collator = ucol_open("ja", &status);
    // The third strength is case, width and kana kind.
    if (m_collator)
        ucol_setStrength(m_collator, UCOL_SECONDARY);
}

JapaneseCollator::~JapaneseCollator() {
    ucol_close(m_collator);
}

int JapaneseCollator::compare(const char *left, int leftLength, const char *right, int rightLength) const {
    // Codes are ASCII letters and digits: there the collation is the byte order with case ignored.
    if (std::all_of(left, left + leftLength, isPlain) && std::all_of(right, right + rightLength, isPlain)) {
        const int shorter = std::min(leftLength, rightLength);
        for (int i = 0; i < shorter; ++i)
            if (const int difference = lower(left[i]) - lower(right[i]))
                return difference;
        return leftLength - rightLength;
    }
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(m_collator, left, leftLength, right, rightLength, &status);
}

LikePattern::LikePattern(const QString &pattern) {
    QString marked = pattern;
    marked.replace(u'%', anyText).replace(u'_', anyOne);
    m_pattern = foldForSearch(marked);
}

bool LikePattern::matches(const QString &text) const {
    const QString folded = foldForSearch(text);
    qsizetype at = 0, in = 0;              // in the text, in the pattern
    qsizetype restart = -1, restartAt = 0; // behind the last %, and where it was tried
    while (at < folded.size()) {
        const bool more = in < m_pattern.size();
        if (more && m_pattern[in] == anyText) {
            restart = ++in;
            restartAt = at;
        } else if (more && (m_pattern[in] == anyOne || m_pattern[in] == folded[at])) {
            ++in;
            ++at;
        } else if (restart >= 0) {
            in = restart;
            at = ++restartAt;
        } else {
            return false;
        }
    }
    return std::all_of(m_pattern.begin() + in, m_pattern.end(), [](QChar c) { return c == anyText; });
}
