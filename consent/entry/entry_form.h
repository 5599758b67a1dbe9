#pragma once

#include "consent/entry/entry.h"
#include "masters/master_editor.h"

#include <QDialog>
#include <memory>

class CodeNamePair;
class ColumnInputs;
namespace Ui {
class frmDouiRecordEdit;
}

/// The entry form of one consent, new or changed. Accepted when it was registered.
class frmDouiRecordEdit : public QDialog {
public:
    explicit frmDouiRecordEdit(Environment &environment, QWidget *parent = nullptr);
    ~frmDouiRecordEdit() override;

    /// Shows a stored consent, or a new one of a patient. 0, or −1 with sErrMsg.
    ///@{
    short iInit(cT_ADODB &db, const ConsentRowKey &key);
    short iInit(cT_ADODB &db, const PatientKey &patient);
    ///@}
    const QString &sErrMsg() const { return m_error; }
    /// The key under which the consent was registered.
    const ConsentRowKey &savedKey() const { return m_entry->savedKey(); }
    /// A colleague was found to have changed the row: what the opener shows is out of date.
    bool isOvertaken() const { return m_overtaken; }

    /// Esc and the window's close button: asks where something would be lost.
    void reject() override;

private:
    void begin(cT_ADODB &db);
    short shown(short status);
    void wire();
    void refresh();
    void enter(const QString &column, const QVariant &value);
    bool isReady();
    bool checks();
    bool meansDates();
    void registerDraft();
    void settleOvertaken(const QString &why);
    void addDiagnosis();
    bool holdsInput();

    Environment &m_environment;
    std::unique_ptr<Ui::frmDouiRecordEdit> m_ui;
    ColumnInputs *m_inputs = nullptr;
    std::unique_ptr<MasterEditor> m_masters;
    std::unique_ptr<MasterSearch> m_doctors;
    CodeNamePair *m_doctor = nullptr;
    std::unique_ptr<ConsentEntry> m_entry;
    QString m_error;
    bool m_overtaken = false;
};
