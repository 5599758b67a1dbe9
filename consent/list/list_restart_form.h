#pragma once

#include "db/tables/keys.h"

#include <QDialog>
#include <memory>

class Clock;
namespace Ui {
class RestartForm;
}

/// Asks for the new period of a deformity-correction row that is restarted.
class RestartForm : public QDialog {
    Q_OBJECT
public:
    /// @param who "IDNo. name" of the row's patient
    RestartForm(const QString &who, const Period &proposed, const Clock &clock, QWidget *parent = nullptr);
    ~RestartForm() override;

    Period period() const;

    /// Stays while the dates are no period, and says so.
    void accept() override;

private:
    void sayWrong(const QString &why, QWidget *where);

    std::unique_ptr<Ui::RestartForm> m_ui;
};
