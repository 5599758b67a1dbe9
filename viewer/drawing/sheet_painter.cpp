#include "viewer/drawing/sheet_painter.h"

#include <QGlyphRun>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>
#include <cmath>

namespace {

QPen penOf(const Stroke &stroke) {
    if (stroke.width <= 0)
        return Qt::NoPen;
    QPen pen(stroke.color, stroke.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    QList<qreal> pattern;
    for (const double length : dashes(stroke))
        pattern.append(length / stroke.width);
    if (!pattern.isEmpty())
        pen.setDashPattern(pattern);
    return pen;
}

void paintOutlines(QPainter &painter, const GlyphRun &run) {
    const QTransform before = painter.worldTransform();
    const double scale = run.size / Face::unitsPerEm;
    const QTransform place = run.place * before;
    for (size_t i = 0; i < run.glyphs.size(); ++i) {
        QTransform glyph = QTransform::fromTranslate(run.at[i].x(), run.at[i].y()) * place;
        painter.setWorldTransform(glyph.scale(scale, scale));
        painter.fillPath(run.face->outline(run.glyphs[i]), painter.pen().color());
    }
    painter.setWorldTransform(before);
}

/// Signs are drawn in a font of the size that the device shows, so that it may fit them to its pixels.
void paintGlyphs(QPainter &painter, const GlyphRun &run) {
    const QTransform before = painter.worldTransform();
    const double scale = std::sqrt(std::abs(painter.deviceTransform().determinant()));
    if (!(scale > 0))
        return;
    QGlyphRun glyphs;
    glyphs.setRawFont(run.face->sized(run.size * scale));
    glyphs.setGlyphIndexes(QList<quint32>(run.glyphs.begin(), run.glyphs.end()));
    QList<QPointF> places;
    places.reserve(qsizetype(run.at.size()));
    for (const QPointF &at : run.at)
        places.append(at * scale);
    glyphs.setPositions(places);
    painter.setWorldTransform(QTransform::fromScale(1 / scale, 1 / scale) * run.place * before);
    painter.drawGlyphRun({}, glyphs);
    painter.setWorldTransform(before);
}

void paintRun(QPainter &painter, const GlyphRun &run) {
    const bool onScreen = painter.paintEngine()->type() == QPaintEngine::Raster;
    const auto paintOnce = run.face->isDrawnByOutline() && onScreen ? paintOutlines : paintGlyphs;
    paintOnce(painter, run);
    if (!run.face->isWidened())
        return;
    GlyphRun beside = run;
    beside.place = QTransform::fromTranslate(run.size * Face::widening, 0) * run.place;
    paintOnce(painter, beside);
}

void paint(QPainter &painter, const SheetText &text) {
    painter.setPen(text.color);
    for (const GlyphRun &run : text.runs)
        paintRun(painter, run);
}

void paint(QPainter &painter, const SheetStroke &stroke) {
    painter.setPen(penOf(stroke.stroke));
    painter.drawPolyline(stroke.points.data(), int(stroke.points.size()));
}

void paint(QPainter &painter, const BoxShape &box) {
    painter.setPen(penOf(box.stroke));
    painter.setBrush(box.fill ? QBrush(*box.fill) : QBrush());
    if (box.kind == BoxShape::Ellipse)
        painter.drawEllipse(box.area);
    else if (box.radius > 0)
        painter.drawRoundedRect(box.area, box.radius, box.radius);
    else
        painter.drawRect(box.area);
}

void paint(QPainter &painter, const SheetPicture &picture) {
    painter.drawImage(picture.area, picture.image);
}

} // namespace

std::vector<double> dashes(const Stroke &stroke) {
    switch (stroke.style) {
    case Stroke::Dash:
        return {stroke.width * 4 + 1, stroke.width * 2 + 0.5};
    case Stroke::Dot:
        return {stroke.width, stroke.width + 0.4};
    case Stroke::Solid:
        break;
    }
    return {};
}

void paintSheet(QPainter &painter, const Sheet &sheet) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform | QPainter::LosslessImageRendering);
    for (const auto &item : sheet.items)
        std::visit([&painter](const auto &drawn) { paint(painter, drawn); }, item);
    painter.restore();
}
