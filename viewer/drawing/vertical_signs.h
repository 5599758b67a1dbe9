#pragma once

#include "viewer/drawing/line_breaks.h"

#include <QPointF>
#include <QTransform>

/// A sign as it stands in a column: with the glyph of its vertical form where the font has one, and its
/// height as advance. `code` stays the sign of the text.
Sign verticalSign(char32_t code, const Typeface &typeface);

/// How a sign of a column is put down: the origin of its glyph, turned where it lies on its side.
/// @param middle the middle of the sign's space
/// @param size of the font, in the unit of `middle`
QTransform verticalPlace(const Sign &sign, QPointF middle, double size);
