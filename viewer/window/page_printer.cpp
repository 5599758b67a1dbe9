#include "viewer/window/page_printer.h"

#include "viewer/document/document.h"

#include <QPageLayout>
#include <QPageRanges>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;
constexpr int leastPercent = 10;

QPageLayout sheetFor(QSizeF size) {
    const bool lying = size.width() > size.height();
    const QPageSize paper(lying ? size.transposed() : size, QPageSize::Millimeter, {},
                          QPageSize::FuzzyOrientationMatch);
    QPageLayout layout(paper, lying ? QPageLayout::Landscape : QPageLayout::Portrait, {});
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

bool wanted(const QPrinter &printer, int page, int currentPage) {
    switch (printer.printRange()) {
    case QPrinter::PageRange: {
        const QPageRanges ranges = printer.pageRanges();
        return ranges.isEmpty() ? page + 1 >= printer.fromPage() && page + 1 <= printer.toPage()
                                : ranges.contains(page + 1);
    }
    case QPrinter::CurrentPage:
        return page == currentPage;
    default:
        return true;
    }
}

/// The sheets to print, in their order, as often as the printer does not repeat them by itself.
std::vector<int> pagesFor(const Document &document, const QPrinter &printer, int currentPage) {
    std::vector<int> once;
    for (int page = 0; page < document.pageCount(); ++page)
        if (wanted(printer, page, currentPage))
            once.push_back(page);
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::ranges::reverse(once);
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    std::vector<int> pages;
    if (printer.collateCopies()) {
        for (int copy = 0; copy < copies; ++copy)
            pages.insert(pages.end(), once.begin(), once.end());
    } else {
        for (const int page : once)
            pages.insert(pages.end(), size_t(copies), page);
    }
    return pages;
}

void paintPage(QPainter &painter, const Document &document, int page, const PrintAdjustment &adjustment) {
    painter.save();
    const double perMillimetre = painter.device()->logicalDpiX() / millimetresPerInch;
    painter.scale(perMillimetre, perMillimetre);
    painter.translate(adjustment.offsetX / 10.0, adjustment.offsetY / 10.0);
    if (adjustment.zoom >= leastPercent)
        painter.scale(adjustment.zoom / 100.0, adjustment.zoom / 100.0);
    document.paint(painter, page);
    painter.restore();
}

} // namespace

void choosePaper(QPrinter &printer, QSizeF size) {
    const QPageLayout sheet = sheetFor(size);
    // Another paper than the printer's own lies in another tray, which the printer finds by the paper.
    if (!printer.pageLayout().pageSize().isEquivalentTo(sheet.pageSize()))
        printer.setPaperSource(QPrinter::Auto);
    printer.setPageLayout(sheet);
}

Result<PagesEnd> printPages(const Document &document, QPrinter &printer, const PrintAdjustment &adjustment,
                            int currentPage, const std::function<bool(int, int)> &goOn) {
    const std::vector<int> pages = pagesFor(document, printer, currentPage);
    const bool ownSheets =
        printer.pageLayout().pageSize().isEquivalentTo(sheetFor(document.pageSize(0)).pageSize());
    printer.setFullPage(true);
    QPainter painter;
    for (size_t i = 0; i < pages.size(); ++i) {
        if (!goOn(int(i), int(pages.size()))) {
            printer.abort();
            return PagesEnd::GivenUp;
        }
        if (ownSheets)
            choosePaper(printer, document.pageSize(pages[i]));
        if (!(i == 0 ? painter.begin(&printer) : printer.newPage()))
            return Failure{u"プリンター「%1」で印刷できません。プリンターの状態を確認してください。"_s.arg(
                printer.printerName())};
        paintPage(painter, document, pages[i], adjustment);
    }
    painter.end();
    return PagesEnd::All;
}
