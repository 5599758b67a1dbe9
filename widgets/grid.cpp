#include "widgets/grid.h"

#include "widgets/cell_delegate.h"
#include "widgets/date_box.h"
#include "widgets/grid_header.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

Grid::Grid(QWidget *parent) : QTableView(parent), m_header(new GridHeader(this)) {
    setHorizontalHeader(m_header);
    setItemDelegate(new CellDelegate(this));
    connect(m_header, &QHeaderView::sectionResized, this, [this] { refreshFrozen(); });
    connect(m_header, &QHeaderView::sectionMoved, this, [this] { refreshFrozen(); });
    setAlternatingRowColors(true);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    verticalHeader()->setVisible(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    sizeRows();
}

void Grid::fitColumns(int widest) {
    if (!model())
        return;
    // A handful of rows tells the width; looking at all of them would touch every cell.
    horizontalHeader()->setResizeContentsPrecision(50);
    const int limit = widthOf(widest);
    for (int column = 0; column < model()->columnCount(); ++column) {
        if (isColumnHidden(column))
            continue;
        const int wanted = qMax(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
        setColumnWidth(column, std::clamp(wanted + widthOf(0), widthOf(4), limit));
    }
}

int Grid::widthOf(int characters) const {
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    return characters * fontMetrics().horizontalAdvance(u'国') + 2 * margin;
}

QByteArray Grid::layoutState() const {
    return horizontalHeader()->saveState();
}

bool Grid::restoreLayout(const QByteArray &state) {
    return horizontalHeader()->restoreState(state);
}

void Grid::goTo(int row, int column) {
    if (!model() || model()->rowCount() == 0 || model()->columnCount() == 0)
        return;
    const QModelIndex index = model()->index(std::clamp(row, 0, model()->rowCount() - 1),
                                             shownColumn(std::clamp(column, 0, model()->columnCount() - 1)));
    setCurrentIndex(index);
    scrollTo(index);
}

// The column itself, or in place of a hidden one the next that is shown, else the last before it.
int Grid::shownColumn(int column) const {
    const int place = m_header->visualIndex(column);
    for (int next = place; next < m_header->count(); ++next)
        if (const int found = m_header->logicalIndex(next); !isColumnHidden(found))
            return found;
    for (int last = place; last >= 0; --last)
        if (const int found = m_header->logicalIndex(last); !isColumnHidden(found))
            return found;
    return column;
}

void Grid::setFrozenColumns(int columns) {
    m_header->setFrozen(columns);
    refreshFrozen();
}

void Grid::refreshFrozen() {
    if (m_header->frozenWidth() == 0)
        return;
    m_header->viewport()->update();
    viewport()->update();
    updateEditorGeometries();
}

QRect Grid::frozenArea() const {
    return m_header->covers() ? QRect(0, 0, m_header->frozenWidth(), viewport()->height()) : QRect();
}

// Where a cell is seen: a frozen one stays, what lies beneath the frozen ones is not seen.
QRect Grid::visualRect(const QModelIndex &index) const {
    QRect cell = QTableView::visualRect(index);
    if (!cell.isValid() || !m_header->covers())
        return cell;
    if (m_header->isFrozen(index.column()))
        cell.translate(m_header->offset(), 0);
    else
        cell.setLeft(qMax(cell.left(), m_header->frozenWidth()));
    return cell;
}

QModelIndex Grid::indexAt(const QPoint &position) const {
    const bool frozen = frozenArea().contains(position);
    return QTableView::indexAt(frozen ? position - QPoint(m_header->offset(), 0) : position);
}

void Grid::scrollTo(const QModelIndex &index, ScrollHint hint) {
    QScrollBar *across = horizontalScrollBar();
    const int before = across->value();
    QTableView::scrollTo(index, hint);
    const int frozen = m_header->frozenWidth();
    if (!index.isValid() || frozen == 0)
        return;
    if (m_header->isFrozen(index.column())) {
        across->setValue(before);
        return;
    }
    const int left = m_header->sectionViewportPosition(index.column());
    if (left < frozen)
        across->setValue(across->value() + left - frozen);
}

// What the base class repaints of a frozen column lies where the column would be without being frozen.
void Grid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dx != 0)
        refreshFrozen();
}

QRegion Grid::visualRegionForSelection(const QItemSelection &selection) const {
    return QTableView::visualRegionForSelection(selection) + frozenArea();
}

void Grid::dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) {
    QTableView::dataChanged(first, last, roles);
    viewport()->update(frozenArea());
}

void Grid::currentChanged(const QModelIndex &current, const QModelIndex &previous) {
    QTableView::currentChanged(current, previous);
    for (const QModelIndex &index : {current, previous})
        if (index.isValid())
            viewport()->update(0, rowViewportPosition(index.row()), viewport()->width(),
                               rowHeight(index.row()));
}

void Grid::paintEvent(QPaintEvent *event) {
    QTableView::paintEvent(event);
    if (!model())
        return;
    const int width = m_header->frozenWidth();
    QPainter painter(viewport());
    if (m_header->covers() && event->region().intersects(frozenArea()))
        paintFrozen(painter);
    painter.setClipping(false);
    markRow(painter);
    if (width == 0)
        return;
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawLine(width - 1, 0, width - 1, viewport()->height());
}

void Grid::paintFrozen(QPainter &painter) {
    const QRect area = frozenArea();
    painter.setClipRect(area);
    painter.fillRect(area, palette().base());
    const int first = qMax(0, rowAt(0));
    const int bottom = rowAt(viewport()->height() - 1);
    const int last = bottom < 0 ? model()->rowCount() - 1 : bottom;
    for (int row = first; row <= last; ++row)
        for (int place = 0; place < m_header->count(); ++place) {
            const int column = m_header->logicalIndex(place);
            if (m_header->sectionPosition(column) >= area.width())
                break;
            if (!isColumnHidden(column))
                paintCell(painter, model()->index(row, column));
        }
}

// A line above and below tell the row in every palette and beside every colour of a cell; the tint is faint
// enough to read through.
void Grid::markRow(QPainter &painter) {
    const QModelIndex current = currentIndex();
    if (!current.isValid() || selectionBehavior() != SelectItems)
        return;
    constexpr int thick = 2, tint = 26;
    const QRect row(0, rowViewportPosition(current.row()), qMin(viewport()->width(), m_header->length()),
                    rowHeight(current.row()) - 1);
    QColor colour = palette().color(QPalette::Active, QPalette::Highlight);
    painter.fillRect(QRect(row.topLeft(), QSize(row.width(), thick)), colour);
    painter.fillRect(QRect(row.left(), row.bottom() - thick + 1, row.width(), thick), colour);
    colour.setAlpha(tint);
    painter.fillRect(row, colour);
}

// As the base class paints a cell.
void Grid::paintCell(QPainter &painter, const QModelIndex &index) {
    const QRect cell = visualRect(index);
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = cell;
    if (index.row() % 2 == 1 && alternatingRowColors())
        option.features |= QStyleOptionViewItem::Alternate;
    if (selectionModel()->isSelected(index))
        option.state |= QStyle::State_Selected;
    if (index == currentIndex() && hasFocus())
        option.state |= QStyle::State_HasFocus;
    if (!index.flags().testFlag(Qt::ItemIsEnabled))
        option.state &= ~QStyle::State_Enabled;
    style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &option, &painter, this);
    itemDelegateForIndex(index)->paint(&painter, option, index);
    painter.setPen(QColor::fromRgba(QRgb(style()->styleHint(QStyle::SH_Table_GridLineColor, &option, this))));
    painter.drawLine(cell.bottomLeft() + QPoint(0, 1), cell.bottomRight() + QPoint(1, 1));
    painter.drawLine(cell.topRight() + QPoint(1, 0), cell.bottomRight() + QPoint(1, 1));
}

bool Grid::commitEditor() {
    QWidget *editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
    if (!editor)
        return true;
    if (auto *box = qobject_cast<DateBox *>(editor); box && !box->settle())
        return false;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
    return true;
}

void Grid::keyPressEvent(QKeyEvent *event) {
    const bool wholeRows = selectionBehavior() == SelectRows && event->modifiers() == Qt::NoModifier;
    if (wholeRows && (event->key() == Qt::Key_Home || event->key() == Qt::Key_End)) {
        goTo(event->key() == Qt::Key_Home ? 0 : model()->rowCount() - 1, qMax(0, currentIndex().column()));
        return;
    }
    QTableView::keyPressEvent(event);
}

void Grid::changeEvent(QEvent *event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        sizeRows();
}

bool Grid::viewportEvent(QEvent *event) {
    if (event->type() == QEvent::ToolTip && showWholeText(*static_cast<QHelpEvent *>(event)))
        return true;
    return QTableView::viewportEvent(event);
}

// What takes room from the grid (a line in the foot, a filter unfolded) must not cover the row one is in.
void Grid::resizeEvent(QResizeEvent *event) {
    const int row = currentIndex().isValid() ? rowViewportPosition(currentIndex().row()) : -1;
    QTableView::resizeEvent(event);
    if (row < 0 || row >= event->oldSize().height())
        return;
    const int across = horizontalScrollBar()->value();
    scrollTo(currentIndex());
    horizontalScrollBar()->setValue(across);
}

void Grid::sizeRows() {
    // Fonts differ more in the height of their lines than in that of their signs.
    const int line = fontMetrics().height(), sign = fontMetrics().horizontalAdvance(u'国');
    verticalHeader()->setMinimumSectionSize(line);
    verticalHeader()->setDefaultSectionSize(qMax(line + 2, sign * 2));
}

bool Grid::showWholeText(const QHelpEvent &event) {
    const QModelIndex index = indexAt(event.pos());
    if (!index.isValid() || index.data(Qt::ToolTipRole).isValid())
        return false;
    const QString text = index.data(Qt::DisplayRole).toString();
    const int room = columnWidth(index.column()) - 2 * widthOf(0);
    if (fontMetrics().horizontalAdvance(text) <= room)
        return false;
    constexpr qsizetype most = 600; // a tip that covers the table helps nobody
    const QString tip = text.size() > most ? text.left(most) + u"…"_s : text;
    QToolTip::showText(event.globalPos(), tip.toHtmlEscaped().replace(u'\n', u"<br>"_s), viewport(),
                       visualRect(index));
    return true;
}
