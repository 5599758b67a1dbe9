#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmMsgWait;
}

/// A text while something short is under way. It has no button: whoever showed it hides or drops it.
class frmMsgWait : public QDialog {
public:
    explicit frmMsgWait(QWidget *parent = nullptr);
    ~frmMsgWait() override;

    /// Shows the text and returns when it is on the screen.
    void showText(const QString &text);

    /// Esc and the window's close button do nothing.
    void reject() override {}

private:
    std::unique_ptr<Ui::frmMsgWait> m_ui;
};
