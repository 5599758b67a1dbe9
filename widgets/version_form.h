#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmVer;
}

/// Version information; btnReturn, F12 and Esc close it.
class frmVer : public QDialog {
public:
    explicit frmVer(const QString &version, QWidget *parent = nullptr);
    ~frmVer() override;

private:
    std::unique_ptr<Ui::frmVer> m_ui;
};
