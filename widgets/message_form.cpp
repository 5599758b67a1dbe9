#include "widgets/message_form.h"

#include "widgets/message_text.h"

#include <QAccessible>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTextDocument>
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
      m_text(new QTextEdit(this)),
      m_last(new QLabel(this)),
      m_buttons(new QDialogButtonBox(this)) {
    setWindowTitle(message.title.isEmpty() ? u"同意書管理"_s : message.title);
    auto *grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    if (const QIcon icon = iconOf(message.icon, *style()); !icon.isNull()) {
        auto *picture = new QLabel(this);
        picture->setObjectName(u"imgIcon"_s);
        const int side = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
        picture->setPixmap(icon.pixmap(side));
        grid->addWidget(picture, 0, 0, Qt::AlignTop);
    }
    m_text->setObjectName(u"txtMessage"_s);
    m_text->setAccessibleName(windowTitle());
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setFocusPolicy(Qt::ClickFocus);
    m_text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere); // a path has no word boundaries
    m_text->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_text->document()->setDocumentMargin(0);
    m_text->viewport()->setAutoFillBackground(false);
    QPalette colours = m_text->palette();
    colours.setColor(QPalette::Text, palette().color(QPalette::WindowText));
    m_text->setPalette(colours);
    grid->addWidget(m_text, 0, 1, Qt::AlignLeft | Qt::AlignVCenter);
    grid->setColumnStretch(1, 1);
    m_last->setObjectName(u"lblLast"_s);
    m_last->setTextFormat(Qt::PlainText);
    m_last->setWordWrap(true);
    grid->addWidget(m_last, 1, 1);
    grid->addWidget(m_buttons, 2, 0, 1, 2);
    addButtons(message);
    fit();
}

void MessageForm::addButtons(const Message &message) {
    for (const Choice &choice : choicesOf(message.buttons)) {
        QPushButton *button = m_buttons->addButton(choice.button);
        button->setText(choice.caption);
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
    const QSize available = screen()->availableGeometry().size();
    constexpr int longestLine = 44; // full-width characters: more are hard to follow
    const int most = qMin(fontMetrics().horizontalAdvance(u'国') * longestLine, available.width() * 3 / 4);
    const int least = qMin(most, fontMetrics().horizontalAdvance(windowTitle()));
    QSize wanted = sizeOf(m_whole, most);
    wanted.setWidth(std::clamp(wanted.width() + 1, least, most));
    m_last->hide();
    m_text->setFixedSize(wanted.width(), 0);
    // A tenth of the screen is left to the window's frame.
    const int room = available.height() * 9 / 10 - layout()->totalSizeHint().height();
    if (wanted.height() <= room) {
        m_text->setPlainText(m_whole);
        m_text->setFixedSize(wanted);
        return;
    }
    const qsizetype lastBreak = m_whole.lastIndexOf(u'\n');
    const QString last = m_whole.sliced(lastBreak + 1);
    const int lastHeight = sizeOf(last, wanted.width()).height() + layout()->spacing();
    const bool parted = lastBreak > 0 && lastHeight < room / 4;
    m_text->setPlainText(parted ? m_whole.first(lastBreak) : m_whole);
    m_text->setFixedSize(wanted.width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_text),
                         room - (parted ? lastHeight : 0));
    m_last->setText(parted ? last : QString());
    m_last->setVisible(parted);
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
        QGuiApplication::clipboard()->setText(m_whole);
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

void MessageForm::showEvent(QShowEvent *event) {
    QDialog::showEvent(event);
    // The desktop's sound, and a screen reader's announcement.
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}
