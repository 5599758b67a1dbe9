#include "widgets/grid_header.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionHeader>

GridHeader::GridHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(true);
    setSectionsMovable(true);
    setHighlightSections(false);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void GridHeader::setFrozen(int columns) {
    m_frozen = columns;
    viewport()->update();
}

// What scrolls keeps a third of the window.
int GridHeader::frozen() const {
    const int most = viewport()->width() * 2 / 3;
    int columns = m_frozen;
    while (columns > 0 && widthOf(columns) > most)
        --columns;
    return columns;
}

int GridHeader::widthOf(int columns) const {
    int width = 0;
    for (int place = 0; place < count() && columns > 0; ++place)
        if (const int size = sectionSize(logicalIndex(place)); size > 0) {
            width += size;
            --columns;
        }
    return width;
}

bool GridHeader::isFrozen(int column) const {
    return sectionPosition(column) < frozenWidth();
}

QSize GridHeader::sectionSizeFromContents(int section) const {
    if (!model()) // while its owner is being destroyed
        return QHeaderView::sectionSizeFromContents(section);
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.section = section;
    option.orientation = Qt::Horizontal;
    option.text = model()->headerData(section, Qt::Horizontal).toString();
    if (isSortIndicatorShown())
        option.sortIndicator = QStyleOptionHeader::SortDown;
    return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
}

// Captions are one line each: one of them says how high all are, and the others' signs need not be loaded
// before somebody sees them.
QSize GridHeader::sizeHint() const {
    return count() > 0 ? sectionSizeFromContents(0) : QHeaderView::sizeHint();
}

void GridHeader::paintEvent(QPaintEvent *event) {
    QHeaderView::paintEvent(event);
    const int width = frozenWidth();
    if (width == 0)
        return;
    QPainter painter(viewport());
    if (offset() > 0)
        for (int place = 0; place < count(); ++place) {
            const int column = logicalIndex(place);
            const QRect section(sectionPosition(column), 0, sectionSize(column), viewport()->height());
            if (section.left() >= width)
                break;
            if (section.width() == 0)
                continue;
            painter.fillRect(section, palette().button());
            painter.save();
            paintSection(&painter, section, column);
            painter.restore();
        }
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawLine(width - 1, 0, width - 1, viewport()->height());
}

int GridHeader::offsetAt(const QPointF &position) const {
    return position.x() < frozenWidth() ? offset() : 0;
}

// The base class looks sections up where they would lie without being frozen.
bool GridHeader::passOn(QMouseEvent &event) {
    if (event.type() == QEvent::MouseButtonPress)
        m_heldFrozen = event.position().x() < frozenWidth();
    const bool frozenOne = event.buttons() == Qt::NoButton && event.type() != QEvent::MouseButtonRelease
                               ? event.position().x() < frozenWidth()
                               : m_heldFrozen;
    QMouseEvent moved(event.type(), event.position() - QPointF(frozenOne ? offset() : 0, 0),
                      event.globalPosition(), event.button(), event.buttons(), event.modifiers(),
                      event.pointingDevice());
    const bool done = QHeaderView::viewportEvent(&moved);
    event.setAccepted(moved.isAccepted());
    return done;
}

bool GridHeader::viewportEvent(QEvent *event) {
    if (!covers())
        return QHeaderView::viewportEvent(event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return passOn(static_cast<QMouseEvent &>(*event));
    case QEvent::ToolTip: {
        const auto &help = static_cast<QHelpEvent &>(*event);
        QHelpEvent moved(QEvent::ToolTip, help.pos() - QPoint(offsetAt(help.pos()), 0), help.globalPos());
        return QHeaderView::viewportEvent(&moved);
    }
    default:
        return QHeaderView::viewportEvent(event);
    }
}
