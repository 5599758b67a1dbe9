#include "widgets/enter_moves_on.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QScopedValueRollback>

EnterMovesOn::EnterMovesOn(QWidget *form) : QObject(form) {
    for (QWidget *input : form->findChildren<QWidget *>()) {
        if (qobject_cast<QLineEdit *>(input) || qobject_cast<QComboBox *>(input) ||
            qobject_cast<QCheckBox *>(input) || qobject_cast<QRadioButton *>(input))
            input->installEventFilter(this);
    }
}

bool EnterMovesOn::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::KeyPress || m_asking)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (!enter || (key->modifiers() & ~Qt::KeypadModifier))
        return false;
    {
        // The box and its other watchers see the key first: they may settle, or refuse, what was typed.
        const QScopedValueRollback asking(m_asking, true);
        QCoreApplication::sendEvent(watched, event);
    }
    if (!event->isAccepted() && static_cast<QWidget *>(watched)->hasFocus()) {
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(watched, &tab);
    }
    event->accept();
    return true;
}
