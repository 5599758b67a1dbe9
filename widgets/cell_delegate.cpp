#include "widgets/cell_delegate.h"

#include <QApplication>
#include <QPainter>

namespace {

bool isLineOfText(const QStyleOptionViewItem &cell) {
    using Option = QStyleOptionViewItem;
    const Option::ViewItemFeatures others =
        Option::HasCheckIndicator | Option::HasDecoration | Option::WrapText;
    return !(cell.features & others) && !(cell.state & QStyle::State_HasFocus) &&
           !cell.text.contains(QChar::LineFeed) && !cell.text.contains(QChar::LineSeparator);
}

QPalette::ColorGroup groupOf(const QStyleOptionViewItem &cell) {
    if (!(cell.state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return cell.state & QStyle::State_Active ? QPalette::Normal : QPalette::Inactive;
}

void drawText(QPainter &painter, const QStyleOptionViewItem &cell, const QRect &room) {
    const QFontMetrics &metrics = cell.fontMetrics;
    const bool atLeft = cell.displayAlignment.testFlag(Qt::AlignLeft);
    // No sign is wider than a line is high.
    const bool fits = cell.text.size() * metrics.height() <= room.width();
    QString text = cell.text;
    int x = room.left();
    if (!fits || !atLeft) {
        text = metrics.elidedText(text, cell.textElideMode, room.width());
        const QSize size(metrics.horizontalAdvance(text), metrics.height());
        x = QStyle::alignedRect(cell.direction, cell.displayAlignment, size, room).left();
    }
    const bool selected = cell.state.testFlag(QStyle::State_Selected);
    painter.setFont(cell.font);
    painter.setPen(cell.palette.color(groupOf(cell), selected ? QPalette::HighlightedText : QPalette::Text));
    painter.drawText(x, room.top() + (room.height() - metrics.height()) / 2 + metrics.ascent(), text);
}

} // namespace

void CellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    if (!isLineOfText(cell))
        return QStyledItemDelegate::paint(painter, option, index);
    const QStyle &style = cell.widget ? *cell.widget->style() : *QApplication::style();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
    if (cell.text.isEmpty())
        return;
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, cell.widget) + 1;
    drawText(*painter, cell, cell.rect.adjusted(margin, 0, -margin, 0));
}
