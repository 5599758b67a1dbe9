#pragma once

#include "masters/master_description.h"
#include "masters/master_editor.h"
#include "widgets/pick_list_model.h"

#include <QDialog>

namespace Ui {
class MasterListForm;
}

/// The list of a master: narrowed by number and by letters, with entry, deletion, print and CSV. Created,
/// initialised by iInit and shown modally.
class MasterListForm : public QDialog {
public:
    MasterListForm(Environment &environment, cT_ADODB &db, MasterKind kind, QWidget *parent = nullptr);
    ~MasterListForm() override;

    /// 0, or −1 with sErrMsg.
    short iInit();
    const QString &sErrMsg() const { return m_error; }
    /// Whether rows were written.
    bool written() const { return m_written; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void wire();
    void readSettings();
    Result<> load();
    void refresh(const QString &code);
    void narrow();
    QString currentCode();
    void edit(const QString &code);
    void remove();
    void iPrintItiran();
    void startMenu();

    Environment &m_environment;
    cT_ADODB &m_db;
    const MasterDescription m_description;
    MasterEditor m_editor;
    std::unique_ptr<Ui::MasterListForm> m_ui;
    PickListModel m_model;
    QString m_error;
    bool m_written = false;
};

/// Doctors.
class frmMainteIshi02 : public MasterListForm {
public:
    frmMainteIshi02(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr)
        : MasterListForm(environment, db, MasterKind::Doctor, parent) {}
};

/// Medical institutions, homes and care offices.
class frmMainteSisetsu : public MasterListForm {
public:
    frmMainteSisetsu(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr)
        : MasterListForm(environment, db, MasterKind::Facility, parent) {}
};

/// Patients of the office.
class frmMainteRiyousha : public MasterListForm {
public:
    frmMainteRiyousha(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr)
        : MasterListForm(environment, db, MasterKind::Patient, parent) {}
};

/// Counsellors of the office.
class frmMainteSoudan : public MasterListForm {
public:
    frmMainteSoudan(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr)
        : MasterListForm(environment, db, MasterKind::Counsellor, parent) {}
};

/// Practitioners of the office.
class frmMainteStaff : public MasterListForm {
public:
    frmMainteStaff(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr)
        : MasterListForm(environment, db, MasterKind::Staff, parent) {}
};
