#include "viewer/document/sheet_builder.h"

#include "viewer/drawing/text_setting.h"

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

QString textOf(const TextBox &box, const RecordValues &values) {
    QString text;
    for (const TextPiece &piece : box.pieces)
        text += piece.isItem ? values(piece.text) : piece.text;
    return text;
}

/// The largest rectangle of a picture's proportions, in the middle of a box.
QRectF fitted(QSizeF picture, const QRectF &box) {
    QRectF area({}, picture.scaled(box.size(), Qt::KeepAspectRatio));
    area.moveCenter(box.center());
    return area;
}

} // namespace

SheetBuilder::SheetBuilder(const Report &report, const Items &items, const Tools &tools,
                           const PageFacts &facts)
    : m_report(report), m_layout(*report.layout), m_items(items), m_tools(tools), m_facts(facts) {}

Sheet SheetBuilder::build(const PagePlace &place) {
    m_sheet.size = Pages::sheetSize(m_report);
    const RecordValues values(m_items, place.row, m_facts);
    addWatermark(values);
    if (place.section >= 0)
        addSection(m_layout.sections[size_t(place.section)], {}, values);
    else
        addList(place);
    return std::move(m_sheet);
}

/// From corner to corner under everything else, so that what it crosses stays legible.
void SheetBuilder::addWatermark(const RecordValues &values) {
    const auto &mark = m_layout.watermark;
    if (!mark || !mark->values.contains(values(mark->item)))
        return;
    TextBox box;
    const double diagonal = std::hypot(m_sheet.size.width(), m_sheet.size.height());
    box.area = QRectF(-diagonal * 0.4, -diagonal * 0.2, diagonal * 0.8, diagonal * 0.4);
    box.alignment = Qt::AlignCenter;
    box.font = u"ゴシック"_s;
    box.bold = true;
    box.shrink = true;
    box.size = 0.25 * diagonal * 72 / 25.4;
    box.color = QColor(0xDC, 0xDC, 0xDC);
    QTransform turn = QTransform::fromTranslate(m_sheet.size.width() / 2, m_sheet.size.height() / 2);
    turn.rotateRadians(-std::atan2(m_sheet.size.height(), m_sheet.size.width()));
    for (SheetText &text : setText(box, mark->text, m_tools.fonts.typeface(box.font, box.bold))) {
        for (GlyphRun &run : text.runs)
            run.place *= turn;
        text.area = turn.mapRect(text.area);
        m_sheet.items.emplace_back(std::move(text));
    }
}

void SheetBuilder::addList(const PagePlace &place) {
    const RecordValues first(m_items, place.row, m_facts);
    QPointF corner(m_layout.margins.left(), m_layout.margins.top());
    addSections(Section::Head, place.first, first, &corner);
    const ListFlow flow(m_layout, m_items, m_sheet.size);
    for (int row = place.row; row < place.rowEnd; ++row) {
        const RecordValues values(m_items, row, m_facts);
        for (const Section *group : flow.groupsBefore(row, row == place.row)) {
            addSection(*group, corner, values);
            corner.ry() += group->height;
        }
        addSections(Section::Detail, place.first, values, &corner);
    }
    double height = 0;
    for (const Section &section : m_layout.sections)
        if (section.kind == Section::Foot)
            height += section.height;
    corner.setY(m_sheet.size.height() - m_layout.margins.bottom() - height);
    addSections(Section::Foot, place.first, first, &corner);
}

/// All sections of a kind one below the other, beginning at the corner, which moves down.
void SheetBuilder::addSections(Section::Kind kind, bool first, const RecordValues &values, QPointF *corner) {
    for (const Section &section : m_layout.sections) {
        const bool elsewhere =
            first ? section.first == Section::NotFirst : section.first == Section::OnlyFirst;
        if (section.kind != kind || elsewhere)
            continue;
        addSection(section, *corner, values);
        corner->ry() += section.height;
    }
}

void SheetBuilder::addSection(const Section &section, QPointF corner, const RecordValues &values) {
    for (const Element &element : section.elements) {
        const bool shown = std::all_of(element.when.begin(), element.when.end(),
                                       [&values](const ShowWhen &when) { return holds(when, values); });
        if (shown)
            std::visit([&](const auto &shape) { add(shape, corner, values); }, element.shape);
    }
}

void SheetBuilder::add(const TextBox &box, QPointF corner, const RecordValues &values) {
    const Typeface &typeface = m_tools.fonts.typeface(box.font, box.bold);
    for (SheetText &text : setText(box, textOf(box, values), typeface)) {
        for (GlyphRun &run : text.runs)
            run.place *= QTransform::fromTranslate(corner.x(), corner.y());
        text.area.translate(corner);
        m_sheet.items.emplace_back(std::move(text));
    }
}

void SheetBuilder::add(const LineShape &line, QPointF corner, const RecordValues &) {
    m_sheet.items.emplace_back(SheetStroke{{line.from + corner, line.to + corner}, line.stroke});
}

void SheetBuilder::add(const BoxShape &box, QPointF corner, const RecordValues &) {
    BoxShape moved = box;
    moved.area.translate(corner);
    m_sheet.items.emplace_back(moved);
}

void SheetBuilder::add(const MarkShape &mark, QPointF corner, const RecordValues &values) {
    if (!mark.values.contains(values(mark.item)))
        return;
    const QRectF area = mark.area.translated(corner);
    const auto at = [&area](double x, double y) {
        return QPointF(area.left() + x * area.width(), area.top() + y * area.height());
    };
    const auto stroke = [&](std::vector<QPointF> points) {
        m_sheet.items.emplace_back(SheetStroke{std::move(points), mark.stroke});
    };
    switch (mark.kind) {
    case MarkShape::Circle:
        m_sheet.items.emplace_back(BoxShape{BoxShape::Ellipse, area, mark.stroke, {}, 0});
        break;
    case MarkShape::Tick:
        stroke({at(0.1, 0.55), at(0.4, 0.85), at(0.95, 0.1)});
        break;
    case MarkShape::Cross:
        stroke({at(0, 0), at(1, 1)});
        stroke({at(1, 0), at(0, 1)});
        break;
    case MarkShape::Strike:
        stroke({at(0, 0.5), at(1, 0.5)});
        break;
    }
}

void SheetBuilder::add(const ImageBox &image, QPointF corner, const RecordValues &values) {
    const QString name = image.item.isEmpty() ? image.file : values(image.item);
    if (name.isEmpty())
        return;
    const Picture picture = m_tools.pictures.find(m_report, name);
    if (picture.image.isNull())
        return;
    const QRectF area = fitted(picture.image.size(), image.area.translated(corner));
    m_sheet.items.emplace_back(SheetPicture{area, picture.image, picture.key});
}
