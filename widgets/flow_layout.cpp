#include "widgets/flow_layout.h"

FlowLayout::FlowLayout(QWidget *parent, Widths widths) : QLayout(parent), m_widths(widths) {
    setContentsMargins({});
}

FlowLayout::~FlowLayout() {
    qDeleteAll(m_items);
}

QLayoutItem *FlowLayout::takeAt(int index) {
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const QLayoutItem *item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect &rect) {
    QLayout::setGeometry(rect);
    arrange(rect, Move::Yes);
}

QSize FlowLayout::sizeOf(const QLayoutItem &item, int uniform) const {
    const QSize size = item.sizeHint();
    return m_widths == Widths::Uniform ? QSize(uniform, size.height()) : size;
}

int FlowLayout::arrange(const QRect &rect, Move move) const {
    const int gap = qMax(spacing(), 0);
    int uniform = 0;
    for (const QLayoutItem *item : m_items)
        uniform = qMax(uniform, item->sizeHint().width());

    int x = rect.x(), y = rect.y(), rowHeight = 0;
    for (QLayoutItem *item : m_items) {
        const QSize size = sizeOf(*item, uniform);
        if (rowHeight > 0 && x + size.width() > rect.x() + rect.width()) {
            x = rect.x();
            y += rowHeight + gap;
            rowHeight = 0;
        }
        if (move == Move::Yes)
            item->setGeometry(QRect(QPoint(x, y), size));
        x += size.width() + gap;
        rowHeight = qMax(rowHeight, size.height());
    }
    return y + rowHeight - rect.y();
}
