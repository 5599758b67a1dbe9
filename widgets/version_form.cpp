#include "widgets/version_form.h"

#include "ui_version_form.h"

frmVer::frmVer(const QString &version, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmVer>()) {
    m_ui->setupUi(this);
    m_ui->lblVersion->setText(version);
    connect(m_ui->btnReturn, &QPushButton::clicked, this, &QDialog::accept);
}

frmVer::~frmVer() = default;
