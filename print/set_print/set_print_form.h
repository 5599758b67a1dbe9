#pragma once

#include "app/base/messages.h"
#include "print/consent_form/print_settings.h"
#include "print/consent_form/single_print.h"
#include "print/set_print/set_print_job.h"

#include <QDialog>
#include <memory>
#include <optional>

namespace Ui {
class SetPrintForm;
}

/// Which documents set printing proposes when it opens.
enum class SetPrintStart {
    ConsentForms, ///< consent forms alone
    AsLastTime
};

/// Set printing (セット印刷): several documents of the ticked rows' patients in one job. Created, initialised
/// by iInit and shown modally by exec().
class frmSetInsatsuDoui : public QDialog {
public:
    frmSetInsatsuDoui(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);
    ~frmSetInsatsuDoui() override;

    /// @param rows the ticked rows, in the list's order
    /// @param letter how request letters are written
    /// @return 0, or −1 with sErrMsg, when a settings file is missing
    short iInit(std::vector<LetterOrder> rows, const LetterOptions &letter, SetPrintStart start);
    const QString &sErrMsg() const { return m_error; }
    /// What came of it: 0 when documents were handed over, −1 when the form was left without.
    short ihehe() const { return m_handedOver ? 0 : -1; }
    /// Whether rows were marked as output.
    bool written() const { return m_written; }

private:
    short iControlInit();
    void wire();
    void showSettings(const SetPrintSettings &settings, SetPrintStart start);
    void showState();
    bool settle();
    SetPrintSettings chosen(PrintWay way) const;
    SetPrintChoice choice() const;
    void print(PrintWay way);
    bool mayPrint(const SetPrintJob &job, PrintWay way);
    /// What is to be said about the marks.
    std::optional<Message> mark(SetPrintJob &job, bool allPrinted);

    Environment &m_environment;
    cT_ADODB &m_db;
    std::unique_ptr<Ui::SetPrintForm> m_ui;
    std::vector<LetterOrder> m_rows;
    LetterOptions m_letter;
    PatientManagementSettings m_practice;
    ConsentPrintSettings m_form; ///< what the printing screen chose last
    QString m_error;
    bool m_handedOver = false;
    bool m_written = false;
};
