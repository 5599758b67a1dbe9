#include "app/desktop/message_form.h"

#include "app/desktop/foot_line.h"
#include "app/desktop/message_text.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QDialogButtonBox>
#include <QFrame>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Choice {
    Answer answer;
    QDialogButtonBox::StandardButton button;
    QString caption;
};

/// The choices of a box in the order in which closing it without a choice prefers them.
QList<Choice> choicesOf(MessageButtons buttons) {
    const Choice ok{Answer::Ok, QDialogButtonBox::Ok, u"OK"_s};
    const Choice cancel{Answer::Cancel, QDialogButtonBox::Cancel, u"キャンセル"_s};
    const Choice yes{Answer::Yes, QDialogButtonBox::Yes, u"はい(&Y)"_s};
    const Choice no{Answer::No, QDialogButtonBox::No, u"いいえ(&N)"_s};
    switch (buttons) {
    case MessageButtons::Ok:
        return {ok};
    case MessageButtons::OkCancel:
        return {cancel, ok};
    case MessageButtons::YesNo:
        return {no, yes};
    case MessageButtons::YesNoCancel:
        return {cancel, no, yes};
    }
    return {ok};
}

QIcon iconOf(MessageIcon icon, const QStyle &style) {
    switch (icon) {
    case MessageIcon::None:
        return {};
    case MessageIcon::Information:
        return style.standardIcon(QStyle::SP_MessageBoxInformation);
    case MessageIcon::Question:
        return style.standardIcon(QStyle::SP_MessageBoxQuestion);
    case MessageIcon::Exclamation:
        return style.standardIcon(QStyle::SP_MessageBoxWarning);
    case MessageIcon::Critical:
        return style.standardIcon(QStyle::SP_MessageBoxCritical);
    }
    return {};
}

} // namespace

MessageForm::MessageForm(const Message &message, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint | Qt::WindowTitleHint |
                          Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      m_whole(displayedText(message.text)),
      m_answer(choicesOf(message.buttons).front().answer),
      m_text(makeText(u"txtMessage"_s)),
      m_line(new QFrame(this)),
      m_last(makeText(u"txtLast"_s)),
      m_buttons(new QDialogButtonBox(this)) {
    if (QScreen *inUse = parent ? nullptr : QApplication::screenAt(QCursor::pos()))
        setScreen(inUse);
    setWindowTitle(message.title.isEmpty() ? u"同意書管理"_s : message.title);
    setAccessibleDescription(m_whole);
    auto *grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->setColumnStretch(1, 1);
    if (const QIcon icon = iconOf(message.icon, *style()); !icon.isNull()) {
        auto *picture = new QLabel(this);
        picture->setObjectName(u"imgIcon"_s);
        picture->setPixmap(icon.pixmap(style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this)));
        grid->addWidget(picture, 0, 0, Qt::AlignTop);
    }
    grid->addWidget(m_text, 0, 1, Qt::AlignLeft | Qt::AlignVCenter);
    m_last->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    grid->addWidget(m_line, 1, 1);
    grid->addWidget(m_last, 2, 1, Qt::AlignLeft);
    grid->addWidget(m_buttons, 3, 0, 1, 2);
    writeOnWindow();
    addButtons(message);
    fit();
}

QTextEdit *MessageForm::makeText(const QString &name) {
    auto *text = new QTextEdit(this);
    text->setObjectName(name);
    text->setAccessibleName(u"メッセージ"_s);
    text->setFrameShape(QFrame::NoFrame);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text->setFocusPolicy(Qt::NoFocus); // the keys belong to the buttons
    text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    text->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text->document()->setDocumentMargin(0);
    text->viewport()->setAutoFillBackground(false);
    return text;
}

void MessageForm::writeOnWindow() {
    for (QTextEdit *text : {m_text, m_last}) {
        QPalette colours = palette();
        colours.setColor(QPalette::Text, colours.color(QPalette::WindowText));
        text->setPalette(colours);
    }
}

void MessageForm::addButtons(const Message &message) {
    for (const Choice &choice : choicesOf(message.buttons)) {
        QPushButton *button = m_buttons->addButton(choice.button);
        button->setText(choice.caption);
        m_button.insert(choice.answer, button);
        connect(button, &QPushButton::clicked, this, [this, answer = choice.answer] {
            m_answer = answer;
            accept();
        });
        if (choice.answer == message.defaultAnswer) {
            button->setDefault(true);
            button->setFocus();
        }
    }
}

void MessageForm::setCaption(Answer answer, const QString &caption) {
    m_button.value(answer)->setText(caption);
}

QSize MessageForm::sizeOf(const QString &text, int width) const {
    QTextDocument document;
    document.setDefaultFont(m_text->font());
    document.setDefaultTextOption(m_text->document()->defaultTextOption());
    document.setDocumentMargin(0);
    document.setPlainText(text);
    document.setTextWidth(width);
    return {int(std::ceil(document.idealWidth())), int(std::ceil(document.size().height()))};
}

void MessageForm::fit() {
    constexpr int longestLine = 44;          // full-width characters: more are hard to follow
    constexpr qsizetype mostShown = 100'000; // laying out more would keep people waiting
    const QString shown = m_whole.size() > mostShown ? m_whole.first(mostShown) + u'…' : m_whole;
    const QSize available = screen()->availableGeometry().size();
    const int most = qMin(fontMetrics().horizontalAdvance(u'国') * longestLine, available.width() * 3 / 4);
    const int least = qMin(most, fontMetrics().horizontalAdvance(windowTitle()));
    QSize wanted = sizeOf(shown, most);
    wanted.setWidth(std::clamp(wanted.width() + 1, least, most));
    m_line->hide();
    m_last->hide();
    m_text->setFixedSize(wanted.width(), 0);
    // A tenth of the screen is left to the window's frame.
    const int room = qMax(available.height() * 9 / 10 - layout()->totalSizeHint().height(),
                          fontMetrics().lineSpacing() * 2);
    if (wanted.height() <= room) {
        m_text->setPlainText(shown);
        m_text->setFixedSize(wanted);
        return;
    }
    const qsizetype lastBreak = shown.lastIndexOf(u'\n');
    const QString last = shown.sliced(lastBreak + 1);
    const int lastHeight = sizeOf(last, wanted.width()).height();
    const bool parted = lastBreak > 0 && lastHeight < room / 4 && !last.trimmed().isEmpty();
    const int below = parted ? lastHeight + m_line->sizeHint().height() + 2 * layout()->spacing() : 0;
    const int oneLine = sizeOf(u"国"_s, most).height();
    m_text->setPlainText(parted ? shown.first(lastBreak) : shown);
    // Whole lines: half of one above the last paragraph would be read as part of it.
    m_text->setFixedSize(wanted.width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_text),
                         qMax(1, (room - below) / oneLine) * oneLine);
    m_last->setPlainText(parted ? last : QString());
    m_last->setFixedSize(wanted.width(), lastHeight);
    m_line->setVisible(parted);
    m_last->setVisible(parted);
}

void MessageForm::copy() const {
    for (const QTextEdit *text : {m_text, m_last})
        if (const QTextDocumentFragment part = text->textCursor().selection(); !part.isEmpty()) {
            QApplication::clipboard()->setText(part.toPlainText());
            return;
        }
    QApplication::clipboard()->setText(m_whole);
}

QAbstractButton *MessageForm::buttonFor(const QKeyEvent &event) const {
    if (event.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier))
        return nullptr;
    for (QAbstractButton *button : m_buttons->buttons())
        if (const QKeySequence &keys = button->shortcut(); !keys.isEmpty() && keys[0].key() == event.key())
            return button;
    return nullptr;
}

void MessageForm::keyPressEvent(QKeyEvent *event) {
    QScrollBar *bar = m_text->verticalScrollBar();
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->key() == Qt::Key_PageDown)
        bar->triggerAction(QScrollBar::SliderPageStepAdd);
    else if (event->key() == Qt::Key_PageUp)
        bar->triggerAction(QScrollBar::SliderPageStepSub);
    else if (event->key() == Qt::Key_Home)
        bar->triggerAction(QScrollBar::SliderToMinimum);
    else if (event->key() == Qt::Key_End)
        bar->triggerAction(QScrollBar::SliderToMaximum);
    else if (QAbstractButton *button = buttonFor(*event))
        button->animateClick();
    else
        QDialog::keyPressEvent(event);
}

void MessageForm::changeEvent(QEvent *event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        writeOnWindow();
}

void MessageForm::showEvent(QShowEvent *event) {
    QDialog::showEvent(event);
    // The desktop's sound, and a screen reader's announcement.
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

Answer QtMessages::show(const Message &message) {
    MessageForm form(message, QApplication::activeWindow());
    form.exec();
    return form.answer();
}

// Just behind a dialog that has closed, no window is active yet.
void QtMessages::note(const QString &text) {
    QWidget *modal = QApplication::activeModalWidget();
    if (FootLine *foot = FootLine::of(modal ? modal : QApplication::activeWindow()))
        foot->say(text);
    else
        inform(text);
}
