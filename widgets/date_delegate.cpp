#include "widgets/date_delegate.h"

#include "app/base/dates.h"
#include "widgets/date_box.h"

#include <QKeyEvent>

QWidget *DateDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                    const QModelIndex &) const {
    auto *box = new DateBox(parent);
    box->setFrame(false);
    if (m_clock)
        box->setClock(*m_clock);
    return box;
}

void DateDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const {
    auto *box = static_cast<DateBox *>(editor);
    // A model that changes while the box is open must not take the typed text away.
    if (!box->isModified())
        box->setDate(index.data(Qt::EditRole).toDate());
}

void DateDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const {
    const auto *box = static_cast<const DateBox *>(editor);
    if (box->hasWrongInput())
        Q_EMIT rejected(box->text());
    else if (index.data(Qt::EditRole).toDate() != box->date())
        model->setData(index, box->date(), Qt::EditRole);
}

QString DateDelegate::displayText(const QVariant &value, const QLocale &locale) const {
    return value.typeId() == QMetaType::QDate ? dateText(value.toDate())
                                              : QStyledItemDelegate::displayText(value, locale);
}

bool DateDelegate::eventFilter(QObject *editor, QEvent *event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        const bool leaves =
            key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab;
        if (leaves && !static_cast<DateBox *>(editor)->settle())
            return true;
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}
