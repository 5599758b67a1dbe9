#include "widgets/wait_message_form.h"

#include "app/desktop/message_text.h"
#include "ui_wait_message_form.h"

#include <QCoreApplication>

using namespace Qt::Literals::StringLiterals;

namespace {
/// Often enough for a smooth bar, seldom enough to cost the work nothing.
constexpr qint64 PaintEveryMs = 40;
} // namespace

frmWaitMsg::frmWaitMsg(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmWaitMsg>()) {
    m_ui->setupUi(this);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmWaitMsg::reject);
}

frmWaitMsg::~frmWaitMsg() = default;

void frmWaitMsg::showMessage(const QString &text) {
    m_working = false;
    m_ui->lblText->setText(displayedText(text));
    m_ui->barProgress->hide();
    m_ui->cmdCancel->hide();
    m_ui->cmdOK->show();
    exec();
}

void frmWaitMsg::showProgress(const QString &text, Cancel cancel) {
    m_working = true;
    m_mayCancel = cancel == Cancel::Allowed;
    m_cancelled = false;
    m_ui->lblText->setText(displayedText(text));
    m_ui->barProgress->setRange(0, 0);
    m_ui->barProgress->show();
    m_ui->cmdOK->hide();
    m_ui->cmdCancel->setVisible(m_mayCancel);
    m_ui->cmdCancel->setEnabled(true);
    show();
    repaint();
    QCoreApplication::processEvents();
    m_sincePaint.start();
}

void frmWaitMsg::setProgress(int done, int total) {
    const bool finished = total > 0 && done >= total;
    if (m_sincePaint.isValid() && m_sincePaint.elapsed() < PaintEveryMs && !finished)
        return;
    m_ui->barProgress->setRange(0, total);
    m_ui->barProgress->setValue(done);
    QCoreApplication::processEvents();
    m_sincePaint.restart();
}

void frmWaitMsg::reject() {
    if (!m_working) {
        QDialog::reject();
    } else if (m_mayCancel && !m_cancelled) {
        m_cancelled = true;
        m_ui->cmdCancel->setEnabled(false);
        m_ui->lblText->setText(m_ui->lblText->text() + u"\n中止しています…"_s);
    }
}
