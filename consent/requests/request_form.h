#pragma once

#include "consent/requests/request_printing.h"

#include <QDialog>
#include <memory>

class MasterEditor;
class MasterSearch;
class RequestRowsModel;
class cT_ADODB;
struct Environment;
namespace Ui {
class RequestForm;
}

/// Waits for letters behind a waiting message that the user can cancel. The parent must outlive the run.
StartLetterWait letterWait(QWidget *parent);

/// Prepares and puts out the request letters of the rows ticked 対象. Created, initialised by iInit and shown
/// modally by exec().
class frm同意依頼 : public QDialog {
public:
    frm同意依頼(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);
    ~frm同意依頼() override;

    /// @param note shown above the rows; may be empty
    /// @return 0, or −1 with sErrMsg
    short iInit(std::vector<RequestRow> rows, const QString &note = {});
    const QString &sErrMsg() const { return m_error; }
    /// Whether rows were marked.
    bool written() const { return m_written; }

private:
    void wire();
    void fitColumns();
    void showOptions();
    void showState();
    bool readOptions(LetterOptions &options);
    void output(LetterOutput way);
    void chooseDoctor();

    Environment &m_environment;
    cT_ADODB &m_db;
    std::unique_ptr<Ui::RequestForm> m_ui;
    std::unique_ptr<MasterEditor> m_masters;
    std::unique_ptr<MasterSearch> m_doctors;
    RequestRowsModel *m_model;
    QString m_error;
    bool m_written = false;
};
