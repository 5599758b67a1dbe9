#pragma once

#include <QStyledItemDelegate>

/// Paints a cell that is nothing but a line of text, looking as the style's own do. The style measures each
/// text twice before it draws it, which is most of what a page of a grid takes; here a text is measured only
/// where it may not fit. All other cells, and the one with the focus, are left to the style.
class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
