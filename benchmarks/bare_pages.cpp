#include "benchmarks/bare_pages.h"

#include "viewer/drawing/sheet.h"

#include <QFont>
#include <QPainter>
#include <QPdfWriter>

using namespace Qt::Literals::StringLiterals;

BarePages::BarePages(const Document &document, int pages) {
    for (int page = 0; page < pages; ++page) {
        std::vector<Text> texts;
        for (const auto &item : document.sheet(page).items) {
            const auto *text = std::get_if<SheetText>(&item);
            if (!text || text->runs.empty())
                continue;
            const GlyphRun &run = text->runs.front();
            const QString family = run.face->font().familyName();
            const bool bold = run.face->font().weight() >= QFont::Bold;
            texts.push_back({run.place.map(run.at.front()), text->text, fontOf({family, run.size, bold})});
        }
        m_pages.push_back(std::move(texts));
    }
}

int BarePages::fontOf(const Font &font) {
    for (size_t i = 0; i < m_fonts.size(); ++i)
        if (m_fonts[i] == font)
            return int(i);
    m_fonts.push_back(font);
    return int(m_fonts.size()) - 1;
}

void BarePages::writePdf(const QString &path) const {
    constexpr int resolution = 1200;
    constexpr double dots = resolution / 25.4; // a millimetre
    QPdfWriter writer(path);
    writer.setResolution(resolution);
    writer.setPageMargins({});
    std::vector<QFont> fonts;
    for (const Font &font : m_fonts) {
        fonts.emplace_back(font.family);
        fonts.back().setPixelSize(int(font.size * dots));
        fonts.back().setBold(font.bold);
    }
    QPainter painter(&writer);
    for (size_t page = 0; page < m_pages.size(); ++page) {
        if (page > 0)
            writer.newPage();
        for (const Text &text : m_pages[page]) {
            painter.setFont(fonts[size_t(text.font)]);
            painter.drawText(text.baseline * dots, text.text);
        }
    }
}

QByteArray BarePages::html() const {
    QString html = u"<!DOCTYPE html><html><head><meta charset='utf-8'><style>@page{size:A4;margin:0}"
                   "body{margin:0}section{position:relative;height:297mm;break-after:page}"
                   "p{position:absolute;margin:0;white-space:pre;line-height:1}"_s;
    for (size_t i = 0; i < m_fonts.size(); ++i)
        html +=
            u".f%1{font:%2 %3mm '%4'}"_s.arg(QString::number(i), m_fonts[i].bold ? u"bold"_s : u"normal"_s,
                                             QString::number(m_fonts[i].size), m_fonts[i].family);
    html += u"</style></head><body>"_s;
    for (const auto &page : m_pages) {
        html += u"<section>"_s;
        for (const Text &text : page)
            html += u"<p class='f%1' style='left:%2mm;top:%3mm'>%4</p>"_s.arg(
                QString::number(text.font), QString::number(text.baseline.x()),
                QString::number(text.baseline.y() - m_fonts[size_t(text.font)].size),
                text.text.toHtmlEscaped());
        html += u"</section>"_s;
    }
    return (html + u"</body></html>"_s).toUtf8();
}
