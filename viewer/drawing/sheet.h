#pragma once

#include "viewer/drawing/fonts.h"
#include "viewer/layout/layout.h"

#include <QImage>
#include <QSizeF>
#include <QTransform>
#include <variant>
#include <vector>

/// One page, worked out: everything that is drawn, in its order, in millimetres from the paper's corner.
/// Screen, printer and PDF draw the same sheet. It refers to the fonts of its document.

/// Signs of one face. `at` are the places of their origins on the baseline, counted from `place`.
struct GlyphRun {
    const Face *face = nullptr;
    double size = 0; ///< mm
    QTransform place;
    std::vector<quint32> glyphs;
    std::vector<char32_t> signs;  ///< what each glyph stands for
    std::vector<double> advances; ///< of the glyphs, in parts of the size
    std::vector<QPointF> at;
};

/// A line of text, or a column when it is vertical.
struct SheetText {
    std::vector<GlyphRun> runs;
    QColor color;
    QString text;
    QRectF area;
    bool spaced = false; ///< the signs do not follow one another closely: taken singly they make no word
};

struct SheetStroke {
    std::vector<QPointF> points;
    Stroke stroke;
};

struct SheetPicture {
    QRectF area;
    QImage image;
    QString key; ///< the same for the same picture, on whatever sheet
};

struct Sheet {
    QSizeF size;
    std::vector<std::variant<SheetText, SheetStroke, BoxShape, SheetPicture>> items;
};
