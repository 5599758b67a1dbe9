#pragma once

#include "print/mail/mail_choice.h"
#include "print/mail/mail_settings.h"

#include <QDialog>
#include <memory>

class cT_ADODB;
struct Environment;
namespace Ui {
class frmMailSend;
}

/// Chooses the counsellors who are told by mail that consent forms are ready, and sends the mails. Created,
/// initialised by Init and shown modally by exec().
class frmMailSend : public QDialog {
    Q_OBJECT
public:
    explicit frmMailSend(Environment &environment, QWidget *parent = nullptr);
    ~frmMailSend() override;

    /// Reads the mail settings and the counsellors of the rows' patients. The claims outlive the form. 0, or
    /// −1 with sErrMsg.
    short Init(cT_ADODB &db, MailClaims &claims, const std::vector<MailRow> &rows);
    const QString &sErrMsg() const { return m_error; }

    /// Whether rows have other marks than the caller knows.
    bool rowsChanged() const { return m_rowsChanged; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void wire();
    void showState();
    void showPreview();
    void showUnreached();
    QString notReached() const;
    void send();
    void sendTicked();
    short fail(const QString &reason);

    std::unique_ptr<Ui::frmMailSend> m_ui;
    Environment &m_environment;
    MailClaims *m_claims = nullptr;
    MailSettings m_settings;
    MailChoice m_choice;
    QString m_error;
    QStringList m_unreached; ///< who gets no mail
    bool m_rowsChanged = false;
};
