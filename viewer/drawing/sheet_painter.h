#pragma once

#include "viewer/drawing/sheet.h"

class QPainter;

/// Draws a sheet at the painter's origin; the painter's unit must be one millimetre.
void paintSheet(QPainter &painter, const Sheet &sheet);

/// A stroke's dashes and blanks in millimetres; empty for a solid one.
std::vector<double> dashes(const Stroke &stroke);
