#pragma once

#include "viewer/document/document.h"

/// The texts of a document's pages as the yardsticks draw them: worked out beforehand, nothing left but to
/// draw.
class BarePages {
public:
    BarePages(const Document &document, int pages);

    /// With the toolkit's PDF writer.
    void writePdf(const QString &path) const;
    /// As a page of HTML for a browser to print.
    QByteArray html() const;

private:
    struct Text {
        QPointF baseline; ///< mm
        QString text;
        int font;
    };
    struct Font {
        QString family;
        double size; ///< mm
        bool bold;

        bool operator==(const Font &) const = default;
    };

    int fontOf(const Font &font);

    std::vector<std::vector<Text>> m_pages;
    std::vector<Font> m_fonts;
};
