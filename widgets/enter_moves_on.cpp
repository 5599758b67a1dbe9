#include "widgets/enter_moves_on.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>

EnterMovesOn::EnterMovesOn(QWidget *form) : QObject(form), m_window(form->window()) {
    m_window->installEventFilter(this);
    for (QWidget *input : form->findChildren<QWidget *>()) {
        if (qobject_cast<QLineEdit *>(input) || qobject_cast<QComboBox *>(input) ||
            qobject_cast<QCheckBox *>(input) || qobject_cast<QRadioButton *>(input))
            input->installEventFilter(this);
    }
}

bool EnterMovesOn::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return false;
    if (watched != m_window)
        return !m_asking && movedOn(*static_cast<QWidget *>(watched), *key);
    if (m_asking)
        event->ignore(); // no watcher of the box took it
    else
        pressButton();
    return true;
}

bool EnterMovesOn::movedOn(QWidget &input, QKeyEvent &event) {
    if (event.modifiers() & ~Qt::KeypadModifier)
        return false;
    {
        // The box and its other watchers see the key first: they may settle, or refuse, what was typed.
        const QScopedValueRollback asking(m_asking, true);
        QCoreApplication::sendEvent(&input, &event);
    }
    if (!event.isAccepted() && input.hasFocus()) {
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(&input, &tab);
    }
    event.accept();
    return true;
}

void EnterMovesOn::pressButton() const {
    if (auto *button = qobject_cast<QPushButton *>(m_window->focusWidget()))
        button->click();
}
