#pragma once

#include "viewer/drawing/sheet.h"
#include "viewer/output/pdf_font.h"
#include "viewer/output/pdf_pictures.h"

#include <QSet>
#include <map>

/// The fonts of a PDF file by their faces.
class PdfFonts {
public:
    explicit PdfFonts(PdfFile &file) : m_file(file) {}

    PdfFont &font(const Face *face);
    /// After the last page.
    void write();

private:
    PdfFile &m_file;
    std::map<const Face *, PdfFont> m_fonts;
};

/// Turns a sheet into the drawing commands of a page.
class PdfPage {
public:
    PdfPage(PdfFonts &fonts, PdfPictures &pictures) : m_fonts(fonts), m_pictures(pictures) {}

    /// Writes a page below the given parent; gives its object.
    int write(PdfFile &file, const Sheet &sheet, int parent);

private:
    void add(const SheetText &text);
    void add(const SheetStroke &stroke);
    void add(const BoxShape &box);
    void add(const SheetPicture &picture);
    void addRun(const GlyphRun &run);
    void addGlyphs(const GlyphRun &run, PdfFont &font);
    void addRounded(const QRectF &area, double across, double down);
    void addCurve(QPointF from, QPointF to, QPointF corner);
    bool isPlain(const SheetText &text);
    void setFill(const QColor &color);
    void setStroke(const Stroke &stroke);
    void put(std::initializer_list<double> numbers, const char *command);
    void putColor(const QColor &color, const char *command);

    /// What a page begins with, and what was set on it since.
    struct State {
        QColor fill = Qt::black;
        Stroke stroke{1, Stroke::Solid, Qt::black};
    };

    PdfFonts &m_fonts;
    PdfPictures &m_pictures;
    QByteArray m_content;
    State m_state;
    QSet<int> m_usedFonts, m_usedPictures; ///< objects
};
