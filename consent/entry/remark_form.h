#pragma once

#include "consent/record/draft.h"

#include <QDialog>
#include <memory>

class cT_ADODB;
struct Environment;
namespace Ui {
class frmEditBikouDoui;
}

/// Edits the list remark of one consent. Accepted when it was saved.
class frmEditBikouDoui : public QDialog {
public:
    explicit frmEditBikouDoui(Environment &environment, QWidget *parent = nullptr);
    ~frmEditBikouDoui() override;

    /// Shows the remark of a row. 0, or −1 with sErrMsg.
    short iInit(cT_ADODB &db, const ConsentRowKey &key);
    const QString &sErrMsg() const { return m_error; }

    /// A colleague was found to have changed the row: what the opener shows is out of date.
    bool isOvertaken() const { return m_overtaken; }

    /// Asks where a changed remark would be lost.
    void reject() override;

private:
    void confirm();
    bool settleOvertaken(const QString &why);
    QString remark() const;
    bool isChanged() const;
    void showCount();

    Environment &m_environment;
    std::unique_ptr<Ui::frmEditBikouDoui> m_ui;
    cT_ADODB *m_db = nullptr;
    ConsentDraft m_seen;
    QString m_who;
    QString m_error;
    bool m_overtaken = false;
};
