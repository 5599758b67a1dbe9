#pragma once

#include "consent/record/list_row.h"
#include "consent/requests/method_list_model.h"

#include <QDialog>
#include <memory>
#include <optional>

class cT_ADODB;
struct Environment;
namespace Ui {
class RequestMethodsForm;
}

/// The consent row whose individual methods are edited beside the list.
struct MethodsRow {
    ReadRow row;
    QString who;
};

/// Edits the request method list and the individual methods of one consent row. Created, initialised by iInit
/// and shown modally by exec().
class RequestMethodsForm : public QDialog {
    Q_OBJECT
public:
    RequestMethodsForm(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);
    ~RequestMethodsForm() override;

    /// @param row nothing when no row can take individual methods; `who` says why then
    /// @return 0, or −1 with sErrMsg
    short iInit(const std::optional<MethodsRow> &row, const QString &noRow = {});
    const QString &sErrMsg() const { return m_error; }
    /// Whether the list or the row was written.
    bool written() const { return m_written; }

    /// Esc and cmdAddIraiC: leaves, unless unsaved edits keep the user here.
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void wire();
    void showState();
    bool settleCell();
    bool add();
    void remove();
    void move(int by);
    bool hasTyped() const;
    bool changed() const;
    bool regist();
    bool writeList();
    bool writeRow();
    int current() const;
    void goTo(int entry);

    Environment &m_environment;
    cT_ADODB &m_db;
    std::unique_ptr<Ui::RequestMethodsForm> m_ui;
    MethodListModel *m_model;
    std::optional<MethodsRow> m_row;
    QStringList m_read; ///< the entries in the file
    QString m_error;
    bool m_refused = false; ///< the text of the last cell that was left
    bool m_written = false;
};
