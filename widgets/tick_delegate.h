#pragma once

#include <QPixmap>
#include <QStyledItemDelegate>

class Folders;

/// Paints a checkable cell as one of two pictures in its middle, as high as a line of text; without pictures,
/// as the desktop's own check box. A click anywhere in the cell or Space toggles it through
/// Qt::CheckStateRole.
class TickDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit TickDelegate(const QPixmap &off = {}, const QPixmap &on = {}, QObject *parent = nullptr)
        : QStyledItemDelegate(parent), m_off(off), m_on(on) {}

    /// With the suite's pictures, 00.BMP and 01.BMP in the data folder.
    TickDelegate(const Folders &folders, QObject *parent);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

private:
    const QPixmap &scaled(const QPixmap &picture, bool ticked, int side, qreal ratio) const;

    QPixmap m_off;
    QPixmap m_on;
    mutable QPixmap m_scaled[2]; ///< off and on, in the size last painted
};
