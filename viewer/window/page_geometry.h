#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <vector>

/// A place on a page, which keeps its meaning when the zoom changes.
struct PagePoint {
    int page = 0;
    QPointF millimetres;
};

/// Where pages lie that are shown one below the other. Content coordinates are device-independent pixels from
/// the top; pages are centred about x = 0.
class PageGeometry {
public:
    static constexpr double gap = 12;                ///< pixels between pages and round them
    static constexpr double shadow = 2;              ///< below and right of a page
    static constexpr double lead = gap - 2 * shadow; ///< above the first page

    /// @param sizes of all pages, mm
    void setSizes(const std::vector<QSizeF> &sizes);
    void setScale(double pixelsPerMillimetre) { m_scale = pixelsPerMillimetre; }
    double scale() const { return m_scale; }
    /// At which the widest page fills the width, or the largest page the area.
    double scaleForWidth(double width) const;
    double scaleForPage(QSizeF area) const;

    int pageCount() const { return int(m_sizes.size()); }
    QSizeF contentSize() const;
    QRectF page(int page) const;
    /// The height to scroll to for a page: nothing of the one before it is seen.
    double topOf(int at) const { return page(at).top() - lead; }
    /// The page at a height, or the nearest one; −1 when there is none.
    int pageAt(double y) const;
    PagePoint toPage(QPointF content) const;
    QPointF fromPage(const PagePoint &point) const;
    QRectF fromPage(int page, const QRectF &millimetres) const;

private:
    std::vector<QSizeF> m_sizes;
    std::vector<double> m_tops; ///< mm, of the pages without gaps; one more than pages
    QSizeF m_largest;
    double m_scale = 1;
};
