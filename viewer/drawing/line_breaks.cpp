#include "viewer/drawing/line_breaks.h"

#include <QStringView>

namespace {

constexpr double slack = 1e-6; // of the font size; lengths are sums

bool isOneOf(char32_t sign, QStringView signs) {
    return sign < 0x10000 && signs.contains(QChar(char16_t(sign)));
}

bool mayBegin(char32_t sign) {
    return !isOneOf(sign, u"、。，．・：；？！゛゜ヽヾゝゞ々〻ー－～〜…‥）〕］｝〉》」』】’”°′″℃％‰,.:;?!)]}%"
                          u"ぁぃぅぇぉっゃゅょゎァィゥェォッャュョヮヵヶ｡､｣･ｰﾞﾟｧｨｩｪｫｯｬｭｮ");
}

bool mayEnd(char32_t sign) {
    return !isOneOf(sign, u"（〔［｛〈《「『【‘“￥＄￡([{｢\\$");
}

bool isBlank(char32_t sign) {
    return sign == U' ';
}

bool isOfWord(char32_t sign) {
    return sign > U' ' && sign < 0x250 && !isOneOf(sign, u",;!?)]}/-");
}

bool mayBreakBetween(char32_t left, char32_t right) {
    if (isBlank(left) || isBlank(right))
        return !isBlank(right);
    if (isOfWord(left) && isOfWord(right))
        return false;
    return mayBegin(right) && mayEnd(left);
}

/// How many signs of the rest stand on one line.
size_t signsOnLine(std::span<const Sign> rest, double length) {
    double used = 0;
    size_t count = 0;
    while (count < rest.size() && (used += rest[count].advance) <= length + slack)
        ++count;
    if (count == rest.size())
        return count;
    // Blanks that do not fit hang over the edge.
    size_t end = count;
    while (end < rest.size() && isBlank(rest[end].code))
        ++end;
    if (end > count && count > 0)
        return end;
    for (end = count; end > 0; --end)
        if (mayBreakBetween(rest[end - 1].code, rest[end].code))
            return end;
    return std::max<size_t>(count, 1);
}

bool isAnyBlank(char32_t sign) {
    return isBlank(sign) || sign == U'　';
}

/// The same where lines end behind blanks alone, those blanks included: they hang over the edge.
size_t partsOnLine(std::span<const Sign> rest, double length) {
    size_t end = 0;
    double used = 0;
    for (size_t i = 0; i < rest.size(); ++i) {
        if (i > 0 && isAnyBlank(rest[i - 1].code) && !isAnyBlank(rest[i].code))
            end = i;
        used += isAnyBlank(rest[i].code) ? 0 : rest[i].advance;
        if (used > length + slack && end > 0)
            return end;
        used += isAnyBlank(rest[i].code) ? rest[i].advance : 0;
    }
    return rest.size();
}

std::span<const Sign> withoutEndBlanks(std::span<const Sign> signs, Breaks breaks) {
    const auto hangs = breaks == Breaks::AsSet ? isBlank : isAnyBlank;
    while (!signs.empty() && hangs(signs.back().code))
        signs = signs.first(signs.size() - 1);
    return signs;
}

} // namespace

double lengthOf(std::span<const Sign> signs) {
    double length = 0;
    for (const Sign &sign : signs)
        length += sign.advance;
    return length;
}

std::vector<Line> breakLines(std::span<const Sign> paragraph, double length, Breaks breaks) {
    std::vector<Line> lines;
    do {
        const size_t count =
            breaks == Breaks::AsSet ? signsOnLine(paragraph, length) : partsOnLine(paragraph, length);
        const bool last = count == paragraph.size();
        const auto signs = last ? paragraph : withoutEndBlanks(paragraph.first(count), breaks);
        lines.push_back({signs, lengthOf(signs), last});
        paragraph = paragraph.subspan(count);
    } while (!paragraph.empty());
    return lines;
}
