#include "widgets/qt_messages.h"

#include "widgets/message_text.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Choice {
    Answer answer;
    QMessageBox::StandardButton button;
    QString caption;
};

/// The choices of a box in the order in which closing it without a choice prefers them.
QList<Choice> choicesOf(MessageButtons buttons) {
    const Choice ok{Answer::Ok, QMessageBox::Ok, u"OK"_s};
    const Choice cancel{Answer::Cancel, QMessageBox::Cancel, u"キャンセル"_s};
    const Choice yes{Answer::Yes, QMessageBox::Yes, u"はい(&Y)"_s};
    const Choice no{Answer::No, QMessageBox::No, u"いいえ(&N)"_s};
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

QMessageBox::Icon iconOf(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::None:
        return QMessageBox::NoIcon;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

} // namespace

Answer QtMessages::show(const Message &message) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(message.title.isEmpty() ? u"同意書管理"_s : message.title);
    box.setIcon(iconOf(message.icon));
    box.setTextFormat(Qt::PlainText);
    const LongText text = partedText(displayedText(message.text));
    box.setText(text.shown);
    box.setDetailedText(text.whole);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    const QList<Choice> choices = choicesOf(message.buttons);
    for (const Choice &choice : choices) {
        QPushButton *button = box.addButton(choice.button);
        button->setText(choice.caption);
        if (choice.answer == message.defaultAnswer) {
            box.setDefaultButton(button);
            button->setFocus();
        }
    }
    box.setEscapeButton(choices.front().button);
    box.exec();

    const auto pressed = box.standardButton(box.clickedButton());
    for (const Choice &choice : choices)
        if (choice.button == pressed)
            return choice.answer;
    return choices.front().answer;
}
