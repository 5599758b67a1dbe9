#include "viewer/window/page_geometry.h"

#include <algorithm>

void PageGeometry::setSizes(const std::vector<QSizeF> &sizes) {
    m_sizes = sizes;
    m_tops.assign(1, 0);
    m_largest = {};
    for (const QSizeF &size : m_sizes) {
        m_tops.push_back(m_tops.back() + size.height());
        m_largest = m_largest.expandedTo(size);
    }
}

double PageGeometry::scaleForWidth(double width) const {
    return m_largest.isEmpty() ? 1 : std::max(0.1, (width - 2 * gap) / m_largest.width());
}

double PageGeometry::scaleForPage(QSizeF area) const {
    if (m_largest.isEmpty())
        return 1;
    return std::min(scaleForWidth(area.width()),
                    std::max(0.1, (area.height() - lead - gap) / m_largest.height()));
}

QSizeF PageGeometry::contentSize() const {
    if (m_sizes.empty())
        return {};
    return {m_largest.width() * m_scale + 2 * gap,
            lead + m_tops.back() * m_scale + gap * double(m_sizes.size())};
}

QRectF PageGeometry::page(int page) const {
    const QSizeF size = m_sizes[size_t(page)] * m_scale;
    return {-size.width() / 2, lead + m_tops[size_t(page)] * m_scale + gap * page, size.width(),
            size.height()};
}

int PageGeometry::pageAt(double y) const {
    // The gap above a page belongs to it.
    int low = 0, high = pageCount() - 1;
    while (low < high) {
        const int middle = (low + high) / 2;
        if (page(middle).bottom() < y)
            low = middle + 1;
        else
            high = middle;
    }
    return high;
}

PagePoint PageGeometry::toPage(QPointF content) const {
    const int at = pageAt(content.y());
    return at < 0 ? PagePoint() : PagePoint{at, (content - page(at).topLeft()) / m_scale};
}

QPointF PageGeometry::fromPage(const PagePoint &point) const {
    return point.page < pageCount() ? page(point.page).topLeft() + point.millimetres * m_scale : QPointF();
}

QRectF PageGeometry::fromPage(int page, const QRectF &millimetres) const {
    return {fromPage({page, millimetres.topLeft()}), millimetres.size() * m_scale};
}
