#include "app/forms/input_box.h"

#include "app/desktop/message_text.h"
#include "ui_input_box.h"

InputBox::InputBox(const QString &prompt, const QString &title, const QString &proposal, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::InputBox>()) {
    m_ui->setupUi(this);
    setWindowTitle(title);
    m_ui->lblPrompt->setText(displayedText(prompt));
    m_ui->txtAnswer->setText(proposal);
    m_ui->txtAnswer->selectAll();
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

InputBox::~InputBox() = default;

QString InputBox::text() const {
    return m_ui->txtAnswer->text();
}
