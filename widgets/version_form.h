#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmVer;
}

/// Version information, which can be copied for whoever helps; btnReturn, F12 and Esc close it.
class frmVer : public QDialog {
public:
    /// @param details what stands below the version: the installation, licences
    frmVer(const QString &version, const QString &details, QWidget *parent = nullptr);
    ~frmVer() override;

private:
    std::unique_ptr<Ui::frmVer> m_ui;
};
