#pragma once

#include "viewer/drawing/sheet.h"

/// Sets a text in its box: breaks it, shrinks it, and places every sign. Empty lines give nothing.
std::vector<SheetText> setText(const TextBox &box, const QString &text, const Typeface &typeface);
