#include "widgets/tick_delegate.h"

#include "app/base/folders.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

QStyle *styleOf(const QStyleOptionViewItem &option) {
    return option.widget ? option.widget->style() : QApplication::style();
}

bool isTicked(const QModelIndex &index) {
    return index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
}

QPixmap picture(const Folders &folders, const QString &name) {
    return QPixmap(Folders::file(folders.data(), name));
}

} // namespace

TickDelegate::TickDelegate(const Folders &folders, QObject *parent)
    : TickDelegate(picture(folders, QStringLiteral("00.BMP")), picture(folders, QStringLiteral("01.BMP")),
                   parent) {}

void TickDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.text.clear();
    cell.features &= ~(QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay);
    styleOf(option)->drawControl(QStyle::CE_ItemViewItem, &cell, painter, option.widget);
    if (!index.data(Qt::CheckStateRole).isValid())
        return;

    const int side = qMin(option.fontMetrics.height(), option.rect.height() - 2);
    QRect box(0, 0, side, side);
    box.moveCenter(option.rect.center());
    const QPixmap &picture = isTicked(index) ? m_on : m_off;
    if (!picture.isNull()) {
        const QPixmap &fitted =
            scaled(picture, isTicked(index), side, painter->device()->devicePixelRatioF());
        QRect at(QPoint(), fitted.deviceIndependentSize().toSize());
        at.moveCenter(box.center());
        painter->drawPixmap(at, fitted);
        return;
    }
    cell.rect = box;
    cell.state.setFlag(QStyle::State_On, isTicked(index));
    cell.state.setFlag(QStyle::State_Off, !isTicked(index));
    cell.state.setFlag(QStyle::State_HasFocus, false);
    styleOf(option)->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &cell, painter, option.widget);
}

// Every cell shows one of two pictures in one size: they are scaled once.
const QPixmap &TickDelegate::scaled(const QPixmap &picture, bool ticked, int side, qreal ratio) const {
    QPixmap &kept = m_scaled[ticked ? 1 : 0];
    const QSize size = picture.size().scaled(QSize(side, side) * ratio, Qt::KeepAspectRatio);
    if (kept.size() != size) {
        kept = picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        kept.setDevicePixelRatio(ratio);
    }
    return kept;
}

QSize TickDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const {
    return {option.fontMetrics.height() * 2, option.fontMetrics.height()};
}

bool TickDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                               const QModelIndex &index) {
    const Qt::ItemFlags flags = index.flags();
    if (!flags.testFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled) ||
        !index.data(Qt::CheckStateRole).isValid())
        return false;
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() != Qt::LeftButton || !option.rect.contains(mouse->position().toPoint()))
            return false;
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key != Qt::Key_Space && key != Qt::Key_Select)
            return false;
    } else {
        // A double click is two clicks here, not the start of an edit.
        return event->type() == QEvent::MouseButtonDblClick;
    }
    return model->setData(index, isTicked(index) ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}
