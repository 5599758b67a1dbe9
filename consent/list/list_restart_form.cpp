#include "consent/list/list_restart_form.h"

#include "ui_list_restart_form.h"

using namespace Qt::Literals::StringLiterals;

RestartForm::RestartForm(const QString &who, const Period &proposed, const Clock &clock, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::RestartForm>()) {
    m_ui->setupUi(this);
    m_ui->lblWho->setText(who);
    m_ui->lblWrong->hide();
    setClock(*this, clock);
    m_ui->idHenkeiFrom->setDate(proposed.start);
    m_ui->idHenkeiTo->setDate(proposed.end);
    m_ui->idHenkeiFrom->setFocus();
}

RestartForm::~RestartForm() = default;

Period RestartForm::period() const {
    return {m_ui->idHenkeiFrom->date(), m_ui->idHenkeiTo->date()};
}

void RestartForm::accept() {
    for (DateBox *box : {m_ui->idHenkeiFrom, m_ui->idHenkeiTo})
        if (!box->settle() || !box->date().isValid())
            return sayWrong(u"日付を入力してください。"_s, box);
    if (period().end < period().start)
        return sayWrong(u"終了日が開始日より前になっています。"_s, m_ui->idHenkeiTo);
    QDialog::accept();
}

void RestartForm::sayWrong(const QString &why, QWidget *where) {
    m_ui->lblWrong->setText(why);
    m_ui->lblWrong->show();
    where->setFocus();
}
