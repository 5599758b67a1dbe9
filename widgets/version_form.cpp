#include "widgets/version_form.h"

#include "ui_version_form.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::Literals::StringLiterals;

frmVer::frmVer(const QString &version, const QString &details, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmVer>()) {
    m_ui->setupUi(this);
    m_ui->lblVersion->setText(version);
    m_ui->txtDetails->setPlainText(details);
    const int line = fontMetrics().lineSpacing();
    m_ui->txtDetails->setMinimumSize(fontMetrics().horizontalAdvance(u'国') * 34, line * 20);
    connect(m_ui->btnCopy, &QPushButton::clicked, this, [this] {
        QGuiApplication::clipboard()->setText(m_ui->lblProgram->text() + u' ' + m_ui->lblVersion->text() +
                                              u'\n' + m_ui->txtDetails->toPlainText());
    });
    connect(m_ui->btnReturn, &QPushButton::clicked, this, &QDialog::accept);
}

frmVer::~frmVer() = default;
