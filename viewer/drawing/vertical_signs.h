#pragma once

#include "viewer/drawing/line_breaks.h"

#include <QPointF>
#include <QTransform>

/// The signs of a column: with the glyphs of their vertical forms where the font has them, and their heights
/// as advances. The codes stay those of the text. One or two digits stand side by side in one space, more of
/// them one below the other.
std::vector<Sign> verticalSigns(std::span<const char32_t> codes, const Typeface &typeface);

/// How a sign of a column is put down: the origin of its glyph, turned where it lies on its side.
/// @param middle the middle of the sign's space
/// @param size of the font, in the unit of `middle`
QTransform verticalPlace(const Sign &sign, QPointF middle, double size);
