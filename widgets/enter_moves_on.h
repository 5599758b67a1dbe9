#pragma once

#include <QObject>

/// Lets Enter move to the next control of a form, as Tab does: from line boxes, choices and ticks. A box that
/// accepts the key, such as a date box with wrong input, keeps the focus.
class EnterMovesOn : public QObject {
    Q_OBJECT

public:
    /// Watches the inputs that `form` has now; lives as long as the form.
    explicit EnterMovesOn(QWidget *form);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_asking = false; ///< the key is on its way to the box
};
