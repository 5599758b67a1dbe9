#include "db/sqlite/japanese.h"

#include "app/base/text.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

// Noncharacters, which no text holds.
constexpr QChar anyText(u'\uFFFE');
constexpr QChar oneCharacter(u'\uFFFF');

constexpr char firstPrintable = ' ';
constexpr char lastPrintable = '~';

std::string_view withoutTrailingBlanks(std::string_view text) {
    constexpr std::string_view wideBlank = "\u3000";
    for (;;) {
        if (text.ends_with(' '))
            text.remove_suffix(1);
        else if (text.ends_with(wideBlank))
            text.remove_suffix(wideBlank.size());
        else
            return text;
    }
}

std::unique_ptr<icu::Collator> makeCollator() {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(
        icu::Collator::createInstance(icu::Locale::getJapanese(), status));
    if (U_FAILURE(status))
        return nullptr;
    collator->setStrength(icu::Collator::SECONDARY);
    return collator;
}

} // namespace

JapaneseCollator::JapaneseCollator() : m_collator(makeCollator()) {
    if (!m_collator)
        return;
    std::vector<char> order(lastPrintable - firstPrintable + 1);
    std::iota(order.begin(), order.end(), firstPrintable);
    const auto compareOne = [this](char a, char b) { return compareSlowly({&a, 1}, {&b, 1}); };
    std::ranges::stable_sort(order, [&](char a, char b) { return compareOne(a, b) < 0; });
    unsigned char rank = 1;
    for (size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && compareOne(order[i - 1], order[i]) != 0)
            ++rank;
        m_rank[static_cast<unsigned char>(order[i])] = rank;
    }
}

int JapaneseCollator::compareSlowly(std::string_view a, std::string_view b) const {
    UErrorCode status = U_ZERO_ERROR;
    return m_collator->compareUTF8({a.data(), int32_t(a.size())}, {b.data(), int32_t(b.size())}, status);
}

int JapaneseCollator::compare(std::string_view a, std::string_view b) const {
    a = withoutTrailingBlanks(a);
    b = withoutTrailingBlanks(b);
    if (a == b)
        return 0;
    const auto rank = [this](std::string_view text, size_t i) {
        return m_rank[static_cast<unsigned char>(text[i])];
    };
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; ++i) {
        const int left = rank(a, i);
        const int right = rank(b, i);
        if (left == 0 || right == 0)
            return compareSlowly(a, b);
        if (left == right)
            continue;
        // A mark behind the character could still change it.
        const bool marked =
            (i + 1 < a.size() && rank(a, i + 1) == 0) || (i + 1 < b.size() && rank(b, i + 1) == 0);
        return marked ? compareSlowly(a, b) : left - right;
    }
    if (a.size() == b.size())
        return 0;
    const std::string_view longer = a.size() > b.size() ? a : b;
    if (rank(longer, common) == 0)
        return compareSlowly(a, b);
    return a.size() > b.size() ? 1 : -1;
}

LikePattern::LikePattern(const QString &pattern, QChar escape) {
    QString literal;
    const auto takeLiteral = [&] {
        m_pattern += foldForSearch(literal);
        literal.clear();
    };
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        if (!escape.isNull() && c == escape && i + 1 < pattern.size()) {
            literal += pattern[++i];
        } else if (c == u'%' || c == u'_') {
            takeLiteral();
            m_pattern += c == u'%' ? anyText : oneCharacter;
        } else {
            literal += c;
        }
    }
    takeLiteral();

    const QStringView inner = QStringView(m_pattern).mid(1).chopped(m_pattern.size() > 1 ? 1 : 0);
    if (m_pattern.size() > 2 && m_pattern.startsWith(anyText) && m_pattern.endsWith(anyText) &&
        !inner.contains(anyText) && !inner.contains(oneCharacter))
        m_contained = inner.toString();
}

bool LikePattern::matches(const QString &text) const {
    const QString folded = foldForSearch(text);
    return m_contained.isEmpty() ? matchesFolded(folded) : folded.contains(m_contained);
}

bool LikePattern::matchesFolded(QStringView text) const {
    qsizetype t = 0;
    qsizetype p = 0;
    qsizetype behindAny = -1; // in the pattern, behind the last % met
    qsizetype retry = 0;      // in the text, where that % ends its match at the earliest
    while (t < text.size()) {
        if (p < m_pattern.size() && m_pattern[p] == anyText) {
            behindAny = ++p;
            retry = t;
        } else if (p < m_pattern.size() && m_pattern[p] == oneCharacter) {
            t += text[t].isHighSurrogate() && t + 1 < text.size() ? 2 : 1;
            ++p;
        } else if (p < m_pattern.size() && m_pattern[p] == text[t]) {
            ++t;
            ++p;
        } else if (behindAny >= 0) {
            p = behindAny;
            t = ++retry;
        } else {
            return false;
        }
    }
    while (p < m_pattern.size() && m_pattern[p] == anyText)
        ++p;
    return p == m_pattern.size();
}
