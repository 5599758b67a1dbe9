#pragma once

#include "widgets/pick_list_form.h"

struct Environment;

/// Picks a diagnosis from the practice's list file 傷病名List.txt in the data folder, a diagnosis a line.
class DiagnosisForm : public PickListForm {
public:
    explicit DiagnosisForm(Environment &environment, QWidget *parent = nullptr);

protected:
    Result<Recordset> readList() override;
    QString emptyText() const override;

private:
    QString m_path;
};
