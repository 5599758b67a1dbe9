#include "viewer/drawing/text_setting.h"

#include "app/base/codepage932.h"
#include "app/base/text.h"
#include "viewer/drawing/line_breaks.h"
#include "viewer/drawing/vertical_signs.h"

#include <algorithm>

namespace {

/// Of the square that a Japanese sign fills, how much stands above the baseline.
constexpr double aboveBaseline = 0.88;
constexpr double slack = 1e-6; // mm

/// What stands on paper, each with a sign of its own: without what only serves its neighbours, and with a
/// voiced mark joined to its kana.
std::u32string signsOf(QStringView line) {
    std::u32string codes;
    for (const char32_t code : line.toUcs4()) {
        if (code < U' ' || code == 0x7F || selectsShape(code) || QChar::category(code) == QChar::Other_Format)
            continue;
        const bool mark = (code == voicedMark || code == halfVoicedMark) && !codes.empty();
        const char16_t kana =
            mark && codes.back() <= 0xFFFF ? joinedKana(char16_t(codes.back()), char16_t(code)) : u'\0';
        if (kana != 0)
            codes.back() = kana;
        else
            codes += code;
    }
    return codes;
}

class TextSetting {
public:
    TextSetting(const TextBox &box, const QString &text, const Typeface &typeface)
        : m_box(box),
          m_length(box.vertical ? box.area.height() : box.area.width()),
          m_depth(box.vertical ? box.area.width() : box.area.height()) {
        takeSigns(text, typeface);
    }

    std::vector<SheetText> set() {
        m_size = millimetres(m_box.size);
        breakAll();
        if (m_box.shrink && !fits())
            shrink();
        std::vector<SheetText> texts;
        for (size_t i = 0; i < m_lines.size(); ++i)
            if (!m_lines[i].signs.empty())
                texts.push_back(m_box.vertical ? column(m_lines[i], i) : row(m_lines[i], i));
        return texts;
    }

private:
    void takeSigns(const QString &text, const Typeface &typeface) {
        for (const QStringView line : QStringView(text).split(u'\n')) {
            m_paragraphs.push_back(m_signs.size());
            const std::u32string codes = signsOf(line);
            if (m_box.vertical)
                std::ranges::copy(verticalSigns(codes, typeface), std::back_inserter(m_signs));
            else
                for (const char32_t code : codes)
                    m_signs.push_back(rowSign(code, typeface));
        }
        m_paragraphs.push_back(m_signs.size());
    }

    static Sign rowSign(char32_t code, const Typeface &typeface) {
        Sign sign;
        sign.code = code;
        sign.glyph = typeface.glyph(code);
        sign.advance = sign.glyph.advance;
        return sign;
    }

    std::span<const Sign> paragraph(size_t i) const {
        return std::span(m_signs).subspan(m_paragraphs[i], m_paragraphs[i + 1] - m_paragraphs[i]);
    }

    bool wraps() const { return m_box.wrap != TextBox::Wrap::No; }
    Breaks breaks() const {
        return m_box.wrap == TextBox::Wrap::Parts ? Breaks::BehindBlanks : Breaks::AsSet;
    }

    void breakAll() {
        m_lines.clear();
        for (size_t i = 0; i + 1 < m_paragraphs.size(); ++i) {
            if (wraps())
                std::ranges::copy(breakLines(paragraph(i), m_length / m_size, breaks()),
                                  std::back_inserter(m_lines));
            else
                m_lines.push_back({paragraph(i), lengthOf(paragraph(i)), true});
        }
    }

    /// Of all lines, side by side.
    double depth() const { return (double(m_lines.size() - 1) * m_box.lineHeight + 1) * m_size; }

    double longest() const { return std::ranges::max_element(m_lines, {}, &Line::length)->length * m_size; }

    bool fits() const { return depth() <= m_depth + slack && longest() <= m_length + slack; }

    void trySize(double size) {
        m_size = size;
        if (wraps())
            breakAll();
    }

    void shrink() {
        if (!wraps()) {
            m_size *= std::min({1.0, m_length / longest(), m_depth / depth()});
            return;
        }
        double most = m_size;
        double fitting = most;
        // No box is so small that it ends below a thousandth of a millimetre.
        do
            trySize(fitting /= 2);
        while (!fits() && fitting > 0.001);
        for (int i = 0; i < 10; ++i) {
            const double middle = (fitting + most) / 2;
            trySize(middle);
            (fits() ? fitting : most) = middle;
        }
        trySize(fitting);
    }

    /// Where a line stands in the direction of writing, mm.
    struct Stretch {
        double begin, length;
        double gap; ///< blank put between the signs
    };

    /// @param part of the free space that stands before the line: 0, a half or 1
    Stretch stretch(const Line &line, size_t index, double part) const {
        const double natural = line.length * m_size;
        const double rest = m_length - natural;
        const bool single = index == 0 || m_lines[index - 1].endsParagraph;
        const bool spread = m_box.justify && rest > 0 && (!line.endsParagraph || single);
        if (!spread)
            return {rest * part, natural, 0};
        if (line.signs.size() == 1)
            return {rest / 2, natural, 0};
        return {0, m_length, rest / double(line.signs.size() - 1)};
    }

    double partAcross() const {
        return m_box.alignment & Qt::AlignHCenter ? 0.5 : m_box.alignment & Qt::AlignRight ? 1 : 0;
    }
    double partDown() const {
        return m_box.alignment & Qt::AlignVCenter ? 0.5 : m_box.alignment & Qt::AlignBottom ? 1 : 0;
    }

    static QString textOf(const Line &line) {
        std::u32string codes;
        for (const Sign &sign : line.signs) {
            codes += sign.code;
            if (sign.besideCode != 0)
                codes += sign.besideCode;
        }
        return QString::fromUcs4(codes.data(), qsizetype(codes.size()));
    }

    SheetText row(const Line &line, size_t index) const {
        const Stretch across = stretch(line, index, partAcross());
        const double left = m_box.area.left() + across.begin;
        const double top =
            m_box.area.top() + (m_depth - depth()) * partDown() + double(index) * m_box.lineHeight * m_size;
        SheetText text{
            {}, m_box.color, textOf(line), QRectF(left, top, across.length, m_size), across.gap > 0};
        const QTransform place = QTransform::fromTranslate(left, top + aboveBaseline * m_size);
        double x = 0;
        for (const Sign &sign : line.signs) {
            if (sign.glyph.face)
                append(runFor(text, sign, place), sign.code, sign.glyph, {x, 0});
            x += sign.advance * m_size + across.gap;
        }
        return text;
    }

    /// Columns stand side by side from right to left.
    SheetText column(const Line &line, size_t index) const {
        const Stretch down = stretch(line, index, partDown());
        const double top = m_box.area.top() + down.begin;
        const double right = m_box.area.left() + (m_depth - depth()) * partAcross() + depth() -
                             double(index) * m_box.lineHeight * m_size;
        SheetText text{{}, m_box.color, textOf(line), QRectF(right - m_size, top, m_size, down.length), true};
        double y = top;
        for (const Sign &sign : line.signs) {
            if (sign.glyph.face) {
                const QPointF middle(right - m_size / 2, y + sign.advance * m_size / 2);
                GlyphRun &run = runFor(text, sign, verticalPlace(sign, middle, m_size));
                append(run, sign.code, sign.glyph, {0, 0});
                if (sign.besideCode != 0)
                    append(run, sign.besideCode, sign.beside, {sign.glyph.advance * m_size, 0});
            }
            y += sign.advance * m_size + down.gap;
        }
        return text;
    }

    static void append(GlyphRun &run, char32_t code, const Glyph &glyph, QPointF at) {
        run.glyphs.push_back(glyph.index);
        run.signs.push_back(code);
        run.advances.push_back(glyph.advance);
        run.at.push_back(at);
    }

    /// The last run when it has the sign's face and place, else a new one.
    GlyphRun &runFor(SheetText &text, const Sign &sign, const QTransform &place) const {
        if (text.runs.empty() || text.runs.back().face != sign.glyph.face || text.runs.back().place != place)
            text.runs.push_back({sign.glyph.face, m_size, place, {}, {}, {}, {}});
        return text.runs.back();
    }

    const TextBox &m_box;
    double m_length; ///< mm, in the direction of writing
    double m_depth;  ///< mm, across it
    double m_size = 0;
    std::vector<Sign> m_signs;
    std::vector<size_t> m_paragraphs; ///< where each begins; the last is the end
    std::vector<Line> m_lines;
};

} // namespace

std::vector<SheetText> setText(const TextBox &box, const QString &text, const Typeface &typeface) {
    if (text.isEmpty())
        return {};
    return TextSetting(box, text, typeface).set();
}
