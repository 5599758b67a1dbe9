#include "consent/list/list_restart_form.h"

#include "ui_list_restart_form.h"

using namespace Qt::Literals::StringLiterals;

RestartForm::RestartForm(const QString &who, const Period &proposed, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::RestartForm>()) {
    m_ui->setupUi(this);
    m_ui->lblWho->setText(who);
    m_ui->lblWrong->hide();
    m_ui->idHenkeiFrom->setDate(proposed.start);
    m_ui->idHenkeiTo->setDate(proposed.end);
    m_ui->idHenkeiFrom->setFocus();
}

RestartForm::~RestartForm() = default;

Period RestartForm::period() const {
    return {m_ui->idHenkeiFrom->date(), m_ui->idHenkeiTo->date()};
}

void RestartForm::accept() {
    for (DateBox *box : {m_ui->idHenkeiFrom, m_ui->idHenkeiTo}) {
        if (box->settle() && box->date().isValid())
            continue;
        box->setFocus();
        return;
    }
    if (period().end < period().start) {
        m_ui->lblWrong->show();
        m_ui->idHenkeiTo->setFocus();
        return;
    }
    QDialog::accept();
}
