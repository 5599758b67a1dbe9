#pragma once

#include "app/base/messages.h"

#include <QDialog>
#include <QHash>

class QAbstractButton;
class QDialogButtonBox;
class QFrame;
class QPushButton;
class QTextEdit;

/// A message box. It never outgrows the screen, in whatever font: a text with too many lines scrolls, and its
/// last paragraph, the question or the routine that failed, stays in sight below. PageUp, PageDown, Home and
/// End scroll, a button's letter presses it without Alt, Ctrl+C copies the whole text.
class MessageForm : public QDialog {
public:
    /// @param parent the window that it belongs to; without one it comes up on the screen in use
    MessageForm(const Message &message, QWidget *parent);

    /// Names the button of an answer otherwise, e.g. u"開く(&O)".
    void setCaption(Answer answer, const QString &caption);

    /// What was pressed. Closing the box answers Cancel where there is one, otherwise No or Ok.
    Answer answer() const { return m_answer; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// A text that can be selected, and broken where it has no word boundaries, as paths have none.
    QTextEdit *makeText(const QString &name);
    void addButtons(const Message &message);
    /// In the colour of texts on a window, not of those on the paler ground of an input.
    void writeOnWindow();
    void copy() const;
    /// Gives the text the room that it needs and the screen has.
    void fit();
    /// Width and height in pixels of a text whose lines are broken at `width`.
    QSize sizeOf(const QString &text, int width) const;
    /// The button whose letter was pressed alone; null when none bears it.
    QAbstractButton *buttonFor(const QKeyEvent &event) const;

    QString m_whole;
    Answer m_answer;
    QTextEdit *m_text;
    QFrame *m_line;    ///< between the two, where the text scrolls
    QTextEdit *m_last; ///< the last paragraph of a text that scrolls
    QDialogButtonBox *m_buttons;
    QHash<Answer, QPushButton *> m_button;
};

/// Message boxes on the screen, over the window in use, and notes in its foot.
class QtMessages : public Messages {
public:
    Answer show(const Message &message) override;
    void note(const QString &text) override;
};
