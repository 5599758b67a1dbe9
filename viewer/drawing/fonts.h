#pragma once

#include <QHash>
#include <QPainterPath>
#include <QRawFont>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

/// One font file's face, read once and set in any size.
class Face {
public:
    /// @param bold that it is wanted bold
    Face(const QRawFont &font, bool bold);

    /// At `unitsPerEm` pixels.
    const QRawFont &font() const { return m_font; }
    /// At a size in pixels, for painting.
    const QRawFont &sized(double pixels) const;
    /// A glyph's outline at `unitsPerEm` pixels, y down.
    const QPainterPath &outline(quint32 glyph) const;
    /// The rasteriser loses strokes of this kind of font at sizes of the screen (the left stroke of に in a
    /// Mincho): its outlines are filled instead.
    bool isDrawnByOutline() const { return m_outlined; }
    /// The bold form is made by widening the strokes: the font has none.
    bool isWidened() const { return m_widened; }

    static constexpr int unitsPerEm = 1000;
    /// How much wider, of the font size.
    static constexpr double widening = 1.0 / 30;

private:
    QRawFont m_font;
    bool m_widened;
    bool m_outlined;
    mutable QHash<quint32, QPainterPath> m_outlines;
    mutable QHash<int, QRawFont> m_sized; ///< by sixty-fourths of a pixel
};

/// A sign of a font.
struct Glyph {
    const Face *face = nullptr;
    quint32 index = 0;
    double advance = 0; ///< of the font size
};

class Fonts;

/// A family and what stands in for signs that it lacks.
class Typeface {
public:
    const Glyph &glyph(char32_t sign) const;
    /// False when the family is not on this machine and another stands in for it.
    bool isInstalled() const { return m_installed; }

private:
    friend class Fonts;
    Typeface(Fonts &fonts, const QString &family, bool bold);

    Glyph find(char32_t sign) const;

    Fonts &m_fonts;
    bool m_bold;
    bool m_installed;
    std::vector<const Face *> m_faces; ///< the first that has a sign draws it
    mutable QHash<char32_t, Glyph> m_glyphs;
};

/// The faces and typefaces of a document, each read when it is first needed.
class Fonts {
public:
    Fonts() = default;
    Fonts(const Fonts &) = delete;
    Fonts &operator=(const Fonts &) = delete;

    /// @param family a family's name, or 明朝 or ゴシック
    const Typeface &typeface(const QString &family, bool bold);

private:
    friend class Typeface;

    /// The face of an installed family.
    const Face *face(const QString &family, bool bold);
    /// Any font of the machine that has the sign; null when there is none.
    const Face *anyFaceWith(char32_t sign, bool bold);

    QHash<QString, std::shared_ptr<Face>> m_faces;
    QHash<QString, std::shared_ptr<Typeface>> m_typefaces;
};

/// The font size in points as millimetres.
constexpr double millimetres(double points) {
    return points * 25.4 / 72;
}
