#include "consent/list/list_order_form.h"

#include "ui_list_order_form.h"

ListOrderForm::ListOrderForm(ListOrder order, PatientOrder patientOrder, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::ListOrderForm>()) {
    m_ui->setupUi(this);
    m_ui->lstOrder->addItems(listOrderNames());
    m_ui->lstPatientOrder->addItems(patientOrderNames());
    m_ui->lstOrder->setCurrentRow(int(order));
    m_ui->lstPatientOrder->setCurrentRow(int(patientOrder));
    m_ui->lstOrder->setFocus();
}

ListOrderForm::~ListOrderForm() = default;

ListOrder ListOrderForm::order() const {
    return ListOrder(qMax(0, m_ui->lstOrder->currentRow()));
}

PatientOrder ListOrderForm::patientOrder() const {
    return PatientOrder(qMax(0, m_ui->lstPatientOrder->currentRow()));
}
