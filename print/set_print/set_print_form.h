#pragma once

#include "app/base/messages.h"
#include "print/engine/wfd_print_exe.h"
#include "print/set_print/set_print_job.h"
#include "print/set_print/set_print_settings.h"

#include <QDialog>
#include <memory>

namespace Ui {
class SetPrintForm;
}

/// Which documents set printing proposes when it opens.
enum class SetPrintStart {
    ConsentForms, ///< consent forms alone
    AsLastTime
};

/// What set printing asks of the list that opens it.
struct SetPrintCaller {
    LetterOptions letter; ///< how request letters are written
    /// The rows' letters, asked for when letters are wanted; nothing where they cannot be told, which has
    /// been said.
    std::function<std::vector<LetterOrder>()> orders;
    MarkLetters mark;
};

/// Set printing (セット印刷): several documents of the ticked rows' patients in one job. Created, initialised
/// by iInit and shown modally by exec().
class frmSetInsatsuDoui : public QDialog {
public:
    frmSetInsatsuDoui(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);
    ~frmSetInsatsuDoui() override;

    /// @param rows the ticked rows, in the list's order
    /// @return 0, or −1 with sErrMsg, when a settings file is missing
    short iInit(std::vector<ConsentRowKey> rows, SetPrintCaller caller, SetPrintStart start);
    const QString &sErrMsg() const { return m_error; }
    /// What came of it: 0 when documents were handed over, −1 when the form was left without.
    short ihehe() const { return m_handedOver ? 0 : -1; }

private:
    short iControlInit();
    void wire();
    void showSettings(const SetPrintSettings &settings, SetPrintStart start);
    void showState();
    bool settle();
    SetPrintSettings chosen(PrintWay way) const;
    SetPrintChoice choice() const;
    std::vector<LetterOrder> orders(const SetPrintChoice &choice) const;
    void print(PrintWay way);
    bool mayPrint(const SetPrintJob &job, const SetPrintChoice &choice, PrintWay way);
    void print(SetPrintJob &job, PrintWay way);

    Environment &m_environment;
    cT_ADODB &m_db;
    std::unique_ptr<Ui::SetPrintForm> m_ui;
    std::vector<ConsentRowKey> m_rows;
    SetPrintCaller m_caller;
    PatientManagementSettings m_practice;
    ConsentPrintSettings m_form; ///< what the printing screen chose last
    QString m_error;
    bool m_handedOver = false;
};
