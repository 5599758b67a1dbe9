#pragma once

#include <QString>
#include <vector>

/// One more way of writing a character of names: 﨑 for 崎, 𠮷 for 吉.
struct NameVariant {
    char32_t variant;
    char16_t ordinary;
};

/// All variants that searches find by the ordinary character and by each other, sorted by the variant; the
/// compatibility ideographs (神 in its other shape) are among them.
const std::vector<NameVariant> &nameVariants();

/// The ordinary character of a variant, 0 for any other character.
char16_t ordinaryOf(char32_t variant);

/// The text with ordinary characters in place of variants; nothing else is changed.
QString withOrdinaryNames(const QString &text);
