#include "viewer/drawing/fonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QTextLayout>
#include <array>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int sizesKept = 64;

/// What the two names that every layout may use stand for, best first. Where the locale is Japanese, some
/// fonts are known by their Japanese names only.
constexpr std::array<QStringView, 11> minchoFamilies{
    u"Noto Serif CJK JP", u"Noto Serif JP", u"IPAexMincho", u"IPAex明朝", u"IPAMincho",           u"IPA明朝",
    u"Yu Mincho",         u"游明朝",        u"ＭＳ 明朝",   u"MS Mincho", u"Hiragino Mincho ProN"};
constexpr std::array<QStringView, 13> gothicFamilies{
    u"Noto Sans CJK JP", u"Noto Sans JP", u"IPAexGothic",  u"IPAexゴシック", u"IPAGothic",
    u"IPAゴシック",      u"Yu Gothic",    u"游ゴシック",   u"ＭＳ ゴシック", u"MS Gothic",
    u"Meiryo",           u"メイリオ",     u"Hiragino Sans"};

template <class Families> QString firstInstalled(const Families &families) {
    for (const QStringView family : families)
        if (QFontDatabase::hasFamily(family.toString()))
            return family.toString();
    return {};
}

QRawFont rawFont(const QString &family, bool bold, QFont::StyleStrategy strategy) {
    QFont font(family);
    font.setPixelSize(Face::unitsPerEm);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(strategy);
    return QRawFont::fromFont(font);
}

/// The weight that the font file itself gives; 400 is regular, 700 bold.
int weightOf(const QRawFont &font) {
    const QByteArray os2 = font.fontTable("OS/2");
    return os2.size() < 6 ? 400 : quint8(os2[4]) << 8 | quint8(os2[5]);
}

/// Told by the version of a small table: the outlines themselves would be copied.
bool hasCubicOutlines(const QRawFont &font) {
    return font.fontTable("maxp").startsWith(QByteArrayView("\0\0\x50\0", 4));
}

QString textOf(char32_t sign) {
    return QString::fromUcs4(&sign, 1);
}

} // namespace

Face::Face(const QRawFont &font, bool bold)
    : m_font(font), m_widened(bold && weightOf(font) < 600), m_outlined(hasCubicOutlines(font)) {}

const QPainterPath &Face::outline(quint32 glyph) const {
    const auto found = m_outlines.constFind(glyph);
    return found != m_outlines.constEnd() ? *found : *m_outlines.insert(glyph, m_font.pathForGlyph(glyph));
}

const QRawFont &Face::sized(double pixels) const {
    const int key = int(std::lround(pixels * 64));
    const auto found = m_sized.constFind(key);
    if (found != m_sized.constEnd())
        return *found;
    // Every zoom brings sizes of its own.
    if (m_sized.size() >= sizesKept)
        m_sized.clear();
    QRawFont font = m_font;
    font.setPixelSize(key / 64.0);
    return *m_sized.insert(key, font);
}

Typeface::Typeface(Fonts &fonts, const QString &family, bool bold) : m_fonts(fonts), m_bold(bold) {
    const QString mincho = firstInstalled(minchoFamilies);
    const QString gothic = firstInstalled(gothicFamilies);
    const bool isMincho = family == u"明朝";
    const bool isGothic = family == u"ゴシック";
    QStringList families;
    if (!isMincho && !isGothic && QFontDatabase::hasFamily(family))
        families.append(family);
    m_installed = isMincho || isGothic || !families.isEmpty();
    const bool gothicFirst = isGothic || family.contains(u"ゴシック"_s) ||
                             family.contains(u"Gothic"_s, Qt::CaseInsensitive) ||
                             family.contains(u"Sans"_s, Qt::CaseInsensitive);
    families += gothicFirst ? QStringList{gothic, mincho} : QStringList{mincho, gothic};
    families.removeAll(QString());
    families.removeDuplicates();
    for (const QString &name : families)
        if (const Face *face = m_fonts.face(name, bold))
            m_faces.push_back(face);
}

const Glyph &Typeface::glyph(char32_t sign) const {
    const auto found = m_glyphs.constFind(sign);
    return found != m_glyphs.constEnd() ? *found : *m_glyphs.insert(sign, find(sign));
}

Glyph Typeface::find(char32_t sign) const {
    const QString text = textOf(sign);
    const auto glyphOf = [&text](const Face *face) {
        const auto indexes = face->font().glyphIndexesForString(text);
        Glyph glyph{face, indexes.isEmpty() ? 0 : indexes[0], 0};
        const auto advances = face->font().advancesForGlyphIndexes({glyph.index}, QRawFont::UseDesignMetrics);
        glyph.advance = advances.isEmpty() ? 1 : advances[0].x() / Face::unitsPerEm;
        return glyph;
    };
    for (const Face *face : m_faces)
        if (const Glyph glyph = glyphOf(face); glyph.index != 0)
            return glyph;
    const Face *other = m_fonts.anyFaceWith(sign, m_bold);
    if (!other && !m_faces.empty())
        other = m_faces.front(); // its sign for what it lacks
    return other ? glyphOf(other) : Glyph{nullptr, 0, 1};
}

const Typeface &Fonts::typeface(const QString &family, bool bold) {
    std::shared_ptr<Typeface> &typeface = m_typefaces[family + (bold ? u"*"_s : QString())];
    if (!typeface)
        typeface.reset(new Typeface(*this, family, bold));
    return *typeface;
}

const Face *Fonts::face(const QString &family, bool bold) {
    std::shared_ptr<Face> &face = m_faces[family + (bold ? u"*"_s : QString())];
    if (!face) {
        const QRawFont font = rawFont(family, bold, QFont::NoFontMerging);
        if (font.isValid())
            face = std::make_shared<Face>(font, bold);
    }
    return face.get();
}

const Face *Fonts::anyFaceWith(char32_t sign, bool bold) {
    QFont font(firstInstalled(minchoFamilies));
    font.setPixelSize(Face::unitsPerEm);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    QTextLayout layout(textOf(sign), font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const auto runs = layout.glyphRuns();
    if (runs.isEmpty() || runs[0].glyphIndexes().value(0) == 0)
        return nullptr;
    const QRawFont other = runs[0].rawFont();
    // What draws a box in place of a sign is no font, and has not even a name.
    if (other.fontTable("maxp").isEmpty())
        return nullptr;
    std::shared_ptr<Face> &face =
        m_faces[other.familyName() + u"/"_s + other.styleName() + (bold ? u"*"_s : QString())];
    if (!face)
        face = std::make_shared<Face>(other, bold);
    return face.get();
}
