#include "print/mail/sending_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "ui_sending_form.h"

#include <QCoreApplication>
#include <QScreen>
#include <QTimer>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

frmSending::frmSending(Environment &environment, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmSending>()), m_environment(environment) {
    m_ui->setupUi(this);
    m_ui->cmdEnd->hide();
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmSending::reject);
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, &frmSending::reject);
    const QSize wanted(fontMetrics().horizontalAdvance(u'漢') * 48, fontMetrics().height() * 20);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

frmSending::~frmSending() = default;

short frmSending::Init(MailClaims &claims, const MailSettings &settings,
                       const std::vector<MailRecipient> &recipients) {
    if (recipients.empty()) {
        m_error = u"対象相談員を選択してください。"_s;
        return -1;
    }
    m_claims = &claims;
    m_mail = std::make_unique<mEmail>(settings, m_environment.clock);
    m_recipients = recipients;
    m_ui->barProgress->setRange(0, int(recipients.size()));
    return 0;
}

// Sending begins when the window is on the screen.
void frmSending::showEvent(QShowEvent *event) {
    QDialog::showEvent(event);
    if (m_state == Waiting && m_mail) {
        m_state = Working;
        QTimer::singleShot(0, this, &frmSending::run);
    }
}

void frmSending::reject() {
    if (m_state == Working) {
        m_state = Stopping;
        m_ui->cmdCancel->setEnabled(false);
        m_ui->lblText->setText(u"中止しています…"_s);
    } else if (m_state != Stopping) {
        QDialog::reject();
    }
}

void frmSending::run() {
    m_results = runMails(*m_claims, *m_mail, m_recipients, m_environment.clock.today(), *this);
    finish();
    tellOutcome();
}

void frmSending::begins(size_t recipient) {
    if (m_state == Working)
        m_ui->lblText->setText(m_recipients[recipient].counsellor.who() + u"に送信しています…"_s);
}

void frmSending::ended(size_t recipient, const MailResult &result) {
    m_ui->txtResult->appendPlainText(mailResultLine(m_recipients[recipient], result));
    m_ui->barProgress->setValue(int(recipient) + 1);
}

bool frmSending::goOn() {
    QCoreApplication::processEvents();
    return m_state == Working;
}

void frmSending::finish() {
    m_ui->lblText->setText(mailSummary(m_results));
    m_ui->cmdCancel->hide();
    m_ui->cmdEnd->show();
    m_ui->cmdEnd->setFocus();
}

// A mark that stayed is told apart: with it the counsellor would never hear.
void frmSending::tellOutcome() {
    const bool stopped = m_state == Stopping;
    m_state = Done;
    for (size_t i = 0; i < m_results.size(); ++i)
        if (m_results[i].kind == MailResult::NotGivenBack)
            m_environment.messages.fail(mailResultLine(m_recipients[i], m_results[i]), u"DB-error"_s);
    const QString title = u"メール送信"_s;
    if (std::ranges::all_of(m_results, &MailResult::wasSent))
        m_environment.messages.inform(u"メール送信が完了しました"_s, title);
    else if (stopped)
        m_environment.messages.warn(u"メール送信を中止しました"_s, title);
    else
        m_environment.messages.fail(u"メール送信が失敗しました"_s, title);
}
