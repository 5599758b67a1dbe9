#pragma once

#include <QObject>

class QKeyEvent;

/// Lets Enter move to the next control of a form, as Tab does: from line boxes, choices and ticks. A box that
/// accepts the key, such as a date box with wrong input, keeps the focus. Elsewhere Enter presses the button
/// that has the focus, and never a dialog's default button.
class EnterMovesOn : public QObject {
    Q_OBJECT

public:
    /// Watches the inputs that `form`, a window or a part of one, has now; lives as long as it.
    explicit EnterMovesOn(QWidget *form);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool movedOn(QWidget &input, QKeyEvent &event);
    void pressButton() const;

    QWidget *m_window;
    bool m_asking = false; ///< the key is on its way to the box
};
