#pragma once

#include <QString>

enum class MessageIcon { None, Information, Question, Exclamation, Critical };
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

/// One message box: what it says and what may be answered.
struct Message {
    QString text;
    MessageIcon icon = MessageIcon::None;
    QString title; ///< empty: the program's name
    MessageButtons buttons = MessageButtons::Ok;
    Answer defaultAnswer = Answer::Ok;
};

/// The port through which the program talks to the user. Its Qt form shows boxes,
/// a test's form records them and gives scripted answers.
class Messages {
public:
    virtual ~Messages() = default;

    /// Shows the box and waits. Closing it without a choice answers Cancel where
    /// there is one, otherwise No or Ok.
    virtual Answer show(const Message &message) = 0;

    /// What has come of a command and needs no answer: a line in the foot of the window in use, which its
    /// next note replaces. A box where there is no such window.
    virtual void note(const QString &text) { inform(text); }
    void inform(const QString &text, const QString &title = {}) {
        show({text, MessageIcon::Information, title});
    }
    /// For mistakes of the user.
    void warn(const QString &text, const QString &title = {}) {
        show({text, MessageIcon::Exclamation, title});
    }
    /// For failures of the program or what it leans on.
    void fail(const QString &text, const QString &title = {}) { show({text, MessageIcon::Critical, title}); }
    /// A failed routine: the reason, a line break and the routine's label, e.g. u"iInit() でエラー".
    void failIn(const QString &reason, QStringView label) {
        fail(reason + QStringLiteral("\r\n") + label.toString());
    }
    /// What becomes of unsaved edits: Yes saves them, No drops them, Cancel stays.
    Answer askToSave() {
        return show(
            {QStringLiteral(
                 "変更されています。保存しますか？\r\nいいえを選んだ場合、変更分はキャンセルされます。"),
             MessageIcon::Question,
             {},
             MessageButtons::YesNoCancel,
             Answer::Yes});
    }
    bool ask(const QString &text, const QString &title = {}, Answer defaultAnswer = Answer::Yes) {
        return show({text, MessageIcon::Question, title, MessageButtons::YesNo, defaultAnswer}) ==
               Answer::Yes;
    }
};
