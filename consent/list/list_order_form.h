#pragma once

#include "consent/rows/list_filter.h"

#include <QDialog>
#include <memory>

namespace Ui {
class ListOrderForm;
}

/// Asks for the order of the list and of the patients in it.
class ListOrderForm : public QDialog {
    Q_OBJECT
public:
    ListOrderForm(ListOrder order, PatientOrder patientOrder, QWidget *parent = nullptr);
    ~ListOrderForm() override;

    ListOrder order() const;
    PatientOrder patientOrder() const;

private:
    std::unique_ptr<Ui::ListOrderForm> m_ui;
};
