#include "widgets/code_name_pair.h"

#include "app/base/messages.h"
#include "app/desktop/key_list.h"
#include "widgets/code_box.h"

#include <QAbstractButton>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>

using namespace Qt::Literals::StringLiterals;

CodeNamePair::CodeNamePair(CodeBox *code, QLineEdit *name, QAbstractButton *button, CodeSearch search,
                           Messages &messages)
    : QObject(code),
      m_code(code),
      m_name(name),
      m_button(button),
      m_search(std::move(search)),
      m_messages(messages) {
    const QString what = plainCaption(button->text());
    code->setAccessibleName(what + u"コード"_s);
    name->setAccessibleName(what + u"名"_s);
    name->setReadOnly(true);
    name->setFocusPolicy(Qt::NoFocus);
    code->installEventFilter(this);
    connect(code, &QLineEdit::textChanged, this, [this] {
        m_refused.clear();
        m_name->setText(m_code->code() == m_row.code ? m_row.name : QString());
    });
    connect(button, &QAbstractButton::clicked, this, &CodeNamePair::choose);
}

void CodeNamePair::setRow(const CodeName &row) {
    take(row);
}

bool CodeNamePair::isSettled() const {
    return m_code->code() == m_row.code;
}

bool CodeNamePair::settle() {
    if (isSettled() || m_busy)
        return isSettled();
    if (m_code->code().isEmpty()) {
        take({});
        return true;
    }
    const CodeLookup answer = m_search.lookup ? m_search.lookup(m_code->code()) : CodeLookup();
    if (answer.found()) {
        take(answer.row);
        return true;
    }
    const QScopedValueRollback busy(m_busy, true);
    m_refused = m_code->code();
    // What stands beside the wrong code must not be the former row's.
    if (!answer.failed && m_row != CodeName()) {
        m_row = {};
        Q_EMIT changed(m_row);
    }
    answer.failed ? m_messages.fail(answer.reason) : m_messages.warn(answer.reason);
    m_code->setFocus();
    m_code->selectAll();
    return false;
}

void CodeNamePair::choose() {
    if (m_busy || !m_search.choose)
        return;
    const QScopedValueRollback busy(m_busy, true);
    const std::optional<CodeName> chosen = m_search.choose(m_code->window());
    if (chosen)
        take(*chosen);
    m_code->setFocus();
    m_code->selectAll();
}

bool CodeNamePair::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            settleLater();
    } else if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (settle())
                moveOn();
            event->accept();
            return true;
        }
        if (key->key() == Qt::Key_Down) {
            choose();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void CodeNamePair::take(const CodeName &row) {
    const bool another = row != m_row;
    m_row = row;
    m_code->setText(row.code);
    m_name->setText(row.name);
    m_name->setCursorPosition(0);
    m_name->setToolTip(row.name);
    if (another)
        Q_EMIT changed(row);
}

// Not at once: the click that took the focus may be the one that closes the form or opens the pick list, and
// a message in the middle of a change of focus would swallow it.
void CodeNamePair::settleLater() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_code->isVisible() && !m_code->hasFocus() && !m_button->isDown() &&
                (m_refused.isEmpty() || m_code->code() != m_refused))
                settle();
        },
        Qt::QueuedConnection);
}

void CodeNamePair::moveOn() {
    for (QWidget *next = m_code->nextInFocusChain(); next && next != m_code;
         next = next->nextInFocusChain()) {
        if (next != m_name && next != m_button && next->isEnabled() && next->isVisible() &&
            (next->focusPolicy() & Qt::TabFocus)) {
            next->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}
