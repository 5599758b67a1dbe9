#include "app/desktop/key_help.h"

#include "app/desktop/key_list.h"
#include "app/desktop/message_text.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int hold = 900; // milliseconds
constexpr int repeatGap = 50;
constexpr const char *columnsName = "keyColumns";

QString rowOf(const KeyLine &line) {
    return u"<tr><td style='padding-right:8px; white-space:nowrap'><b>%1</b></td><td>%2</td></tr>"_s.arg(
        line.keys.toHtmlEscaped(), line.what.toHtmlEscaped());
}

/// The groups as rows of a table, a heading counting as one; long groups are parted.
QStringList rowsOf(const QList<KeyGroup> &groups) {
    QStringList rows;
    for (const KeyGroup &group : groups) {
        rows.append(u"<tr><td colspan='2' style='padding-top:4px'><u>%1</u></td></tr>"_s.arg(
            group.title.toHtmlEscaped()));
        for (const KeyLine &line : group.lines)
            rows.append(rowOf(line));
    }
    return rows;
}

bool isHeading(const QString &row) {
    return row.contains(u"colspan"_s);
}

QLabel *text(const QString &shown, QWidget *parent) {
    auto *label = new QLabel(shown, parent);
    label->setWordWrap(true);
    return label;
}

QWidget *windowInUse() {
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : QApplication::activeWindow();
}

} // namespace

KeySheet::KeySheet(QWidget *window) : QFrame(window, Qt::Popup) {
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(u"keySheet"_s);
    setWindowTitle(u"キー操作　—　"_s + window->windowTitle());
    setAccessibleName(windowTitle());
    layOut(*window);
    m_held.start();
}

// Under the keys what the window says of itself, its paragraphs beside one another.
QWidget *KeySheet::makeColumns(int columns, double scale) {
    auto *part = new QWidget(this);
    part->setObjectName(QString::fromLatin1(columnsName));
    QFont font = this->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    part->setFont(font);
    auto *parts = new QVBoxLayout(part);
    parts->setContentsMargins({});
    auto *layout = new QHBoxLayout;
    layout->setSpacing(fontMetrics().height());
    parts->addLayout(layout);
    auto *paragraphs = new QHBoxLayout;
    paragraphs->setSpacing(fontMetrics().height());
    parts->addLayout(paragraphs);
    for (const QString &paragraph :
         displayedText(parentWidget()->whatsThis()).split(u"\n\n"_s, Qt::SkipEmptyParts))
        paragraphs->addWidget(text(paragraph, part), 1, Qt::AlignTop);
    const QStringList rows = rowsOf(keysOf(*parentWidget()));
    const qsizetype each = (rows.size() + columns - 1) / columns;
    for (qsizetype first = 0, last; first < rows.size(); first = last) {
        last = qMin(first + each, rows.size());
        if (last < rows.size() && isHeading(rows[last - 1]))
            --last; // it goes with what it heads
        auto *column =
            new QLabel(u"<table>"_s + rows.mid(first, last - first).join(QString()) + u"</table>"_s, part);
        layout->addWidget(column, 0, Qt::AlignTop);
    }
    return part;
}

// As few columns and as large a text as the screen has room for.
void KeySheet::layOut(QWidget &window) {
    auto *layout = new QVBoxLayout(this);
    auto *title = new QLabel(windowTitle(), this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    layout->addWidget(title);
    auto *line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    layout->addWidget(line);
    layout->addWidget(text(u"どのキーを押しても、この説明を閉じます。"_s, this));

    const QRect screen = window.screen()->availableGeometry();
    QWidget *columns = nullptr;
    for (const double scale : {1.0, 0.9, 0.8, 0.7})
        for (const int count : {1, 2, 3, 4}) {
            delete columns;
            columns = makeColumns(count, scale);
            layout->insertWidget(2, columns);
            layout->activate();
            const QSize wanted = sizeHint();
            if (wanted.width() <= screen.width() &&
                layout->heightForWidth(wanted.width()) <= screen.height() &&
                wanted.height() <= screen.height()) {
                resize(wanted);
                move(window.frameGeometry().center() - rect().center());
                const QRect wished = geometry();
                move(std::clamp(wished.x(), screen.x(), screen.right() - wished.width() + 1),
                     std::clamp(wished.y(), screen.y(), screen.bottom() - wished.height() + 1));
                return;
            }
        }
    setGeometry(screen);
}

void KeySheet::keyPressEvent(QKeyEvent *event) {
    if (!isStillHeld(*event) && !event->isAutoRepeat())
        close();
}

void KeySheet::keyReleaseEvent(QKeyEvent *event) {
    isStillHeld(*event);
}

// A key that is held comes every few hundredths of a second, on some displays as one pressed anew.
bool KeySheet::isStillHeld(const QKeyEvent &event) {
    constexpr qint64 betweenRepeats = 150; // milliseconds
    return event.key() == Qt::Key_F1 && m_held.restart() < betweenRepeats;
}

void KeySheet::mousePressEvent(QMouseEvent *) {
    close();
}

KeyHelp::KeyHelp() {
    qApp->installEventFilter(this);
}

void KeyHelp::show(QWidget &window) {
    (new KeySheet(&window))->show();
}

bool KeyHelp::eventFilter(QObject *, QEvent *event) {
    const bool press = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!press && event->type() != QEvent::KeyRelease)
        return false;
    const auto &key = static_cast<const QKeyEvent &>(*event);
    const Qt::KeyboardModifiers with = key.modifiers() & ~Qt::KeypadModifier;
    const bool ours = key.key() == Qt::Key_F1 && (with == Qt::NoModifier || with == Qt::ShiftModifier) &&
                      !QApplication::activePopupWidget() && windowInUse();
    if (!ours)
        return false;
    event->accept();
    if (event->type() == QEvent::ShortcutOverride)
        return true; // no shortcut takes the key
    return press ? pressed(key.isAutoRepeat(), with == Qt::ShiftModifier) : released(key.isAutoRepeat());
}

bool KeyHelp::pressed(bool repeated, bool shift) {
    const bool goesOn = repeated || m_letGo.isActive();
    m_letGo.stop();
    if (goesOn)
        return true;
    if (!shift && commandOf(*windowInUse(), Qt::Key_F1))
        m_held.start(hold, this);
    else
        show(*windowInUse());
    return true;
}

bool KeyHelp::released(bool repeated) {
    if (!repeated && m_held.isActive())
        m_letGo.start(repeatGap, this);
    return true;
}

void KeyHelp::timerEvent(QTimerEvent *event) {
    const bool letGo = event->timerId() == m_letGo.timerId();
    if (!letGo && event->timerId() != m_held.timerId())
        return QObject::timerEvent(event);
    m_letGo.stop();
    m_held.stop();
    QWidget *window = windowInUse();
    if (window && !letGo)
        show(*window);
    else if (QObject *command = window ? commandOf(*window, Qt::Key_F1) : nullptr)
        activate(*command);
}
