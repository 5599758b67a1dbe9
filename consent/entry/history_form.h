#pragma once

#include "consent/entry/history.h"

#include <QDialog>
#include <functional>
#include <memory>

class HistoryModel;
class frmDouiRecordEdit;
class cT_ADODB;
struct Environment;
namespace Ui {
class frmDouiRecord;
}

/// The consent history of one patient, with its time line.
class frmDouiRecord : public QDialog {
public:
    explicit frmDouiRecord(Environment &environment, QWidget *parent = nullptr);
    ~frmDouiRecord() override;

    /// Opens a connection of the form's own, for openers that have none: "OK", or "NG" with sErrMsg.
    QString g75_Connect();
    /// Shows a patient over the given connection, or over the form's own. 0, or −1 with sErrMsg.
    ///@{
    short iInit(cT_ADODB &db, const PatientKey &patient);
    short iInit(const PatientKey &patient);
    ///@}
    /// Reads the rows again; the current row stays current. 0, or −1 with sErrMsg.
    short iDouiRecordDisp();
    const QString &sErrMsg() const { return m_error; }

    /// Makes a row current.
    void goTo(const ConsentRowKey &key);
    /// Rows were written.
    bool isChanged() const { return m_changed; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void wire();
    void showRows(const ConsentRowKey &current);
    void refresh(const ConsentRowKey &current);
    int currentRow() const;
    ConsentRowKey keyOf(int row) const;
    void enterNew();
    void change();
    void openEditor(const std::function<short(frmDouiRecordEdit &)> &begin, const ConsentRowKey &current);
    void erase();
    void showChanges();
    void print();

    Environment &m_environment;
    std::unique_ptr<Ui::frmDouiRecord> m_ui;
    std::unique_ptr<cT_ADODB> m_own;
    cT_ADODB *m_db = nullptr;
    std::unique_ptr<ConsentHistory> m_history;
    HistoryModel *m_model = nullptr;
    PatientKey m_patient;
    QString m_error;
    bool m_changed = false;
};
