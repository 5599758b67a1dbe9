#pragma once

#include "print/mail/mail_run.h"

#include <QDialog>
#include <memory>

struct Environment;
namespace Ui {
class frmSending;
}

/// Sends the mails and shows what became of each. Created, initialised by Init and shown
/// modally by exec(), which begins to send; it stays until the user closes it.
class frmSending : public QDialog, private MailWatch {
    Q_OBJECT
public:
    explicit frmSending(Environment &environment, QWidget *parent = nullptr);
    ~frmSending() override;

    /// Takes what is to be sent. 0, or −1 with sErrMsg when there is nobody to send to.
    short Init(MailClaims &claims, const MailSettings &settings,
               const std::vector<MailRecipient> &recipients);
    const QString &sErrMsg() const { return m_error; }

    /// One for each recipient, when the form has closed.
    const std::vector<MailResult> &results() const { return m_results; }

    /// Esc and the window's close button: stops sending, afterwards closes.
    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void begins(size_t recipient) override;
    void ended(size_t recipient, const MailResult &result) override;
    bool goOn() override;
    void run();
    void finish();
    void tellOutcome();

    std::unique_ptr<Ui::frmSending> m_ui;
    Environment &m_environment;
    MailClaims *m_claims = nullptr;
    std::unique_ptr<mEmail> m_mail;
    std::vector<MailRecipient> m_recipients;
    std::vector<MailResult> m_results;
    QString m_error;
    enum { Waiting, Working, Stopping, Done } m_state = Waiting;
};
