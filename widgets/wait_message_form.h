#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <memory>

namespace Ui {
class frmWaitMsg;
}

/// A waiting message. Either it waits for the user (showMessage), or the user waits for a long piece of work
/// (showProgress, then setProgress from inside the work). While it is up, no other window of the program
/// takes keys or clicks.
class frmWaitMsg : public QDialog {
public:
    enum class Cancel { Allowed, NotAllowed };

    explicit frmWaitMsg(QWidget *parent = nullptr);
    ~frmWaitMsg() override;

    /// Shows the text and returns when the user presses cmdOK.
    void showMessage(const QString &text);

    /// Shows the text with a progress bar and returns when it is on the screen.
    void showProgress(const QString &text, Cancel cancel = Cancel::NotAllowed);

    /// Moves the bar and lets the window breathe; cheap enough for every step of a loop.
    /// @param total 0 when it is not known how much there is to do
    void setProgress(int done, int total);

    /// Whether the user asked to stop. The work decides when it is safe to.
    bool cancelled() const { return m_cancelled; }

    /// Esc and the window's close button: OK for a message, cancel for work that allows it.
    void reject() override;

private:
    std::unique_ptr<Ui::frmWaitMsg> m_ui;
    QElapsedTimer m_sincePaint;
    bool m_working = false;
    bool m_mayCancel = false;
    bool m_cancelled = false;
};
