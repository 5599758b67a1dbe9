#pragma once

#include "viewer/drawing/fonts.h"
#include "viewer/output/pdf_file.h"

#include <QMap>
#include <optional>

/// One face in a PDF file: the glyphs that its pages use, and what they mean.
class PdfFont {
public:
    PdfFont(PdfFile &file, const Face &face);

    int object() const { return m_object; }
    /// The code that stands for a glyph in the pages.
    quint16 code(quint32 glyph, char32_t sign);
    /// False when the glyph already stands for another sign, so that copying would give that one.
    bool means(quint16 code, char32_t sign) const { return m_uses.value(code).sign == sign; }

    /// Writes the face with the glyphs used.
    void write();

private:
    struct Use {
        quint32 glyph = 0;
        char32_t sign = 0;
    };

    bool isCff() const { return !m_cff.isEmpty(); }
    QByteArray subset() const;
    int addProgram();
    QByteArray widths() const;
    QByteArray meanings() const;
    QByteArray name() const;

    PdfFile &m_file;
    const Face &m_face;
    int m_object;
    QByteArray m_cff; ///< kept: copying it takes longer than all else
    std::optional<std::vector<quint16>> m_numbers;
    QMap<quint16, Use> m_uses; ///< by code
};
