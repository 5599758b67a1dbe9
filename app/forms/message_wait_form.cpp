#include "app/forms/message_wait_form.h"

#include "app/desktop/message_text.h"
#include "ui_message_wait_form.h"

#include <QCoreApplication>

frmMsgWait::frmMsgWait(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmMsgWait>()) {
    m_ui->setupUi(this);
}

frmMsgWait::~frmMsgWait() = default;

void frmMsgWait::showText(const QString &text) {
    m_ui->lblText->setText(displayedText(text));
    show();
    repaint();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
