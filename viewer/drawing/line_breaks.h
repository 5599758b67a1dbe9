#pragma once

#include "viewer/drawing/fonts.h"

#include <span>
#include <vector>

/// A sign of a text with its glyph and how far it takes the line, in parts of the font size.
struct Sign {
    char32_t code = 0;
    Glyph glyph;
    double advance = 0;
    bool isVerticalForm = false;
    char32_t besideCode = 0; ///< of a column: a second digit in the same space
    Glyph beside;
};

/// A line's signs, without the blanks at a break.
struct Line {
    std::span<const Sign> signs;
    double length = 0; ///< of the font size
    bool endsParagraph = true;
};

double lengthOf(std::span<const Sign> signs);

enum class Breaks {
    AsSet, ///< as Japanese is set: no line begins with 、。）」 or small kana, none ends with （「, words in
           ///< Latin letters and numbers stay whole where they can
    BehindBlanks ///< of any width; what has none runs on
};

/// Breaks a paragraph into lines of at most `length`. A line holds one sign at least.
std::vector<Line> breakLines(std::span<const Sign> paragraph, double length, Breaks breaks);
