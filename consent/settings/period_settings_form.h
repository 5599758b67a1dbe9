#pragma once

#include "app/base/result.h"
#include "consent/settings/period_types.h"

#include <QDialog>
#include <memory>

class PeriodTypesModel;
class QModelIndex;
class cT_ADODB;
namespace Ui {
class PeriodSettingsForm;
}
struct Environment;

/// The types by which the patients' periods are reckoned, and the practice's defaults. Created, initialised
/// by iInit and shown modally by exec().
class frm同意書管理設定 : public QDialog {
public:
    frm同意書管理設定(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);
    ~frm同意書管理設定() override;

    /// Reads the defaults and the patients. 0, or −1 with sErrMsg; a settings file that cannot be read is one
    /// too.
    short iInit();
    const QString &sErrMsg() const { return m_error; }

    /// Leaves, unless unsaved changes keep the user here.
    void reject() override;

private:
    void wire();
    Result<PeriodTypeTable> read() const;
    void showTable(const PeriodTypeTable &table);
    void narrow();
    void showState();
    bool settleCells();
    PeriodTypes defaults() const;
    bool isChanged() const;
    bool isRight();
    void setData();
    void saveAsked();
    bool write();
    void readAgain();

    Environment &m_environment;
    cT_ADODB &m_db;
    std::unique_ptr<Ui::PeriodSettingsForm> m_ui;
    PeriodTypesModel *m_default; ///< one row
    PeriodTypesModel *m_model;
    QString m_stored; ///< the defaults as they were read
    QString m_error;
};
