#include "viewer/output/pdf_page.h"

#include "viewer/drawing/sheet_painter.h"

#include <cmath>

namespace {

constexpr double pointsPerMillimetre = 72 / 25.4;
constexpr int matrixDigits = 6;
/// Where the ends of a quarter of an ellipse pull its curve, of the radius.
constexpr double roundness = 0.5522847498;

QByteArray named(const char *kind, const QSet<int> &objects, char letter) {
    if (objects.isEmpty())
        return {};
    QByteArray entries = kind;
    entries += " << ";
    for (const int object : objects)
        entries +=
            '/' + QByteArray(1, letter) + QByteArray::number(object) + ' ' + pdf::reference(object) + ' ';
    return entries + ">> ";
}

} // namespace

PdfFont &PdfFonts::font(const Face *face) {
    return m_fonts.try_emplace(face, m_file, *face).first->second;
}

void PdfFonts::write() {
    for (auto &[face, font] : m_fonts)
        font.write();
}

int PdfPage::write(PdfFile &file, const Sheet &sheet, int parent) {
    m_content.clear();
    m_state = {};
    m_usedFonts.clear();
    m_usedPictures.clear();
    // From here on a unit is a millimetre, and y goes down.
    const double k = pointsPerMillimetre;
    for (const double number : {k, 0.0, 0.0, -k, 0.0, sheet.size.height() * k})
        pdf::append(m_content, number, matrixDigits);
    m_content += "cm\n";
    for (const auto &item : sheet.items)
        std::visit([this](const auto &drawn) { add(drawn); }, item);
    const int content = file.addStream({}, m_content);
    QByteArray size;
    pdf::append(size, sheet.size.width() * k);
    pdf::append(size, sheet.size.height() * k);
    return file.add("<< /Type /Page /Parent " + pdf::reference(parent) + " /MediaBox [0 0 " + size +
                    "] /Contents " + pdf::reference(content) + " /Resources << " +
                    named("/Font", m_usedFonts, 'F') + named("/XObject", m_usedPictures, 'P') + ">> >>");
}

void PdfPage::put(std::initializer_list<double> numbers, const char *command) {
    for (const double number : numbers)
        pdf::append(m_content, number);
    m_content += command;
    m_content += '\n';
}

void PdfPage::putColor(const QColor &color, const char *command) {
    put({color.redF(), color.greenF(), color.blueF()}, command);
}

/// Whether its glyphs one after the other, each by its own meaning, give the text.
bool PdfPage::isPlain(const SheetText &text) {
    if (text.spaced)
        return false;
    for (const GlyphRun &run : text.runs) {
        PdfFont &font = m_fonts.font(run.face);
        for (size_t i = 0; i < run.glyphs.size(); ++i)
            if (!font.means(font.code(run.glyphs[i], run.signs[i]), run.signs[i]))
                return false;
    }
    return true;
}

void PdfPage::add(const SheetText &text) {
    const bool plain = isPlain(text);
    if (!plain)
        m_content += "/Span << /ActualText " + pdf::text(text.text) + " >> BDC\n";
    setFill(text.color);
    m_content += "BT\n";
    for (const GlyphRun &run : text.runs) {
        const bool widened = run.face->isWidened();
        if (widened) {
            setStroke({run.size * Face::widening, Stroke::Solid, text.color});
            m_content += "2 Tr\n";
        }
        addRun(run);
        if (widened)
            m_content += "0 Tr\n";
    }
    m_content += plain ? "ET\n" : "ET\nEMC\n";
}

void PdfPage::addRun(const GlyphRun &run) {
    PdfFont &font = m_fonts.font(run.face);
    m_usedFonts.insert(font.object());
    m_content += "/F" + QByteArray::number(font.object()) + ' ';
    put({run.size}, "Tf");
    // The signs stand upright in a space whose y goes down.
    const QTransform &place = run.place;
    const QPointF origin = place.map(run.at.front());
    for (const double number : {place.m11(), place.m12(), -place.m21(), -place.m22()})
        pdf::append(m_content, number, matrixDigits);
    put({origin.x(), origin.y()}, "Tm");
    addGlyphs(run, font);
}

/// Signs that follow one another closely go into one string; between others stands the step, in thousandths
/// of the font size, taken back from the sign's own width.
void PdfPage::addGlyphs(const GlyphRun &run, PdfFont &font) {
    constexpr double smallestStep = 0.5;
    m_content += "[<";
    for (size_t i = 0; i < run.glyphs.size(); ++i) {
        pdf::appendHex(m_content, font.code(run.glyphs[i], run.signs[i]));
        if (i + 1 == run.glyphs.size())
            break;
        const double step = (run.at[i + 1].x() - run.at[i].x()) / run.size - run.advances[i];
        if (std::abs(step * 1000) >= smallestStep) {
            m_content += "> ";
            pdf::append(m_content, -step * 1000, 1);
            m_content += '<';
        }
    }
    m_content += ">] TJ\n";
}

void PdfPage::setFill(const QColor &color) {
    if (m_state.fill != color)
        putColor(color, "rg");
    m_state.fill = color;
}

void PdfPage::setStroke(const Stroke &stroke) {
    const Stroke before = std::exchange(m_state.stroke, stroke);
    if (before.color != stroke.color)
        putColor(stroke.color, "RG");
    if (before.width != stroke.width)
        put({stroke.width}, "w");
    if (before.style == stroke.style && (before.width == stroke.width || stroke.style == Stroke::Solid))
        return;
    m_content += '[';
    for (const double length : dashes(stroke))
        pdf::append(m_content, length);
    m_content += "] 0 d\n";
}

void PdfPage::add(const SheetStroke &stroke) {
    if (stroke.stroke.width <= 0 || stroke.points.empty())
        return;
    setStroke(stroke.stroke);
    const char *command = "m";
    for (const QPointF &point : stroke.points)
        put({point.x(), point.y()}, std::exchange(command, "l"));
    m_content += "S\n";
}

void PdfPage::add(const BoxShape &box) {
    const bool stroked = box.stroke.width > 0;
    if (!stroked && !box.fill)
        return;
    if (stroked)
        setStroke(box.stroke);
    if (box.fill)
        setFill(*box.fill);
    const QRectF &area = box.area;
    if (box.kind == BoxShape::Ellipse)
        addRounded(area, area.width() / 2, area.height() / 2);
    else if (box.radius > 0)
        addRounded(area, std::min(box.radius, area.width() / 2), std::min(box.radius, area.height() / 2));
    else
        put({area.x(), area.y(), area.width(), area.height()}, "re");
    m_content += stroked && box.fill ? "B\n" : stroked ? "S\n" : "f\n";
}

/// A quarter of an ellipse, bent towards the corner.
void PdfPage::addCurve(QPointF from, QPointF to, QPointF corner) {
    const QPointF first = from + (corner - from) * roundness;
    const QPointF second = to + (corner - to) * roundness;
    put({first.x(), first.y(), second.x(), second.y(), to.x(), to.y()}, "c");
}

void PdfPage::addRounded(const QRectF &area, double across, double down) {
    const QPointF x(across, 0), y(0, down);
    const QPointF start = area.topLeft() + x;
    put({start.x(), start.y()}, "m");
    const auto line = [this](QPointF to) { put({to.x(), to.y()}, "l"); };
    line(area.topRight() - x);
    addCurve(area.topRight() - x, area.topRight() + y, area.topRight());
    line(area.bottomRight() - y);
    addCurve(area.bottomRight() - y, area.bottomRight() - x, area.bottomRight());
    line(area.bottomLeft() + x);
    addCurve(area.bottomLeft() + x, area.bottomLeft() - y, area.bottomLeft());
    line(area.topLeft() + y);
    addCurve(area.topLeft() + y, start, area.topLeft());
    m_content += "h\n";
}

void PdfPage::add(const SheetPicture &picture) {
    const int object = m_pictures.object(picture);
    m_usedPictures.insert(object);
    m_content += "q\n";
    // Pictures hang from their lower edge in a space whose y goes up.
    put({picture.area.width(), 0, 0, -picture.area.height(), picture.area.left(), picture.area.bottom()},
        "cm");
    m_content += "/P" + QByteArray::number(object) + " Do\nQ\n";
}
