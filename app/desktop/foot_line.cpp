#include "app/desktop/foot_line.h"

#include "app/desktop/message_text.h"

#include <QAccessible>
#include <QApplication>
#include <QBoxLayout>
#include <QGridLayout>
#include <QTimerEvent>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int longest = 10'000; // milliseconds
constexpr int readIn = 1'500;

bool layBelow(QLayout *layout, QWidget *line) {
    if (auto *grid = qobject_cast<QGridLayout *>(layout)) {
        grid->addWidget(line, grid->rowCount(), 0, 1, -1);
        return true;
    }
    auto *box = qobject_cast<QBoxLayout *>(layout);
    if (!box || box->direction() != QBoxLayout::TopToBottom)
        return false;
    box->addWidget(line);
    return true;
}

} // namespace

FootLine::FootLine(QWidget *window) : QLabel(window) {
    setObjectName(u"lblFoot"_s);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMargin(2);
    // The pair of colours that every palette makes readable.
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
}

FootLine *FootLine::of(QWidget *window) {
    if (!window)
        return nullptr;
    for (FootLine *line : window->findChildren<FootLine *>())
        if (line->window() == window) // and not a dialog's over it
            return line;
    auto *line = new FootLine(window);
    if (window->layout() && layBelow(window->layout(), line))
        return line;
    delete line;
    return nullptr;
}

void FootLine::say(const QString &text) {
    show(displayedText(text));
    m_said.start();
    m_end.start(longest, this);
    qApp->installEventFilter(this);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void FootLine::show(const QString &text) {
    setText(text);
    setAutoFillBackground(!text.isEmpty());
}

bool FootLine::eventFilter(QObject *watched, QEvent *event) {
    const bool acted = event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress;
    if (acted && m_said.hasExpired(readIn))
        m_end.start(0, this);
    return QLabel::eventFilter(watched, event);
}

void FootLine::timerEvent(QTimerEvent *event) {
    if (event->timerId() != m_end.timerId())
        return QLabel::timerEvent(event);
    m_end.stop();
    qApp->removeEventFilter(this);
    show({});
}

void FootLine::hideEvent(QHideEvent *event) {
    QLabel::hideEvent(event);
    const QWidget *below = window()->parentWidget();
    if (!m_end.isActive() || event->spontaneous() || !below)
        return;
    if (FootLine *line = of(below->window()))
        line->say(text());
}
