#pragma once

#include "search/search_class.h"
#include "search/search_conditions.h"
#include "widgets/pick_list_form.h"

class StaffChoice;
namespace Ui {
class StaffConditions;
}

/// The search for treatment staff: opens frm施術者検索 and holds who was taken.
class cls施術者検索 : public SearchClass {
public:
    using SearchClass::SearchClass;

    /// The chosen staff number, 0 when nobody was chosen.
    qint64 nSeledCD = 0;
    const QString &csSeledName() const { return seled().name; }
    /// The office of the chosen staff member.
    const Branch &seledOffice() const { return m_office; }

    /// Other offices may be chosen too; off, the list keeps to the current office.
    bool allOffices = false;
    /// Only the staff assigned to this consultation; −1: any.
    qint64 consultation = -1;

    /// Checks a typed number in the current office: 0 with the name, or −1 with CsErrStr when there is no
    /// such staff member or the member is suspended.
    short iChkStaff(qint64 nIDNo, QString &csName);

    CodeLookup lookup(const QString &code) override;

protected:
    std::unique_ptr<PickListForm> makeForm(QWidget *parent) override;
    void taken(const PickListForm &form) override;

private:
    Branch m_office;
    bool m_checkFailed = false; ///< the last check failed, and said nothing about the number
};

/// The form of the staff search.
class frm施術者検索 : public PickListForm {
public:
    frm施術者検索(cT_ADODB &db, const Environment &environment, bool allOffices, qint64 consultation,
                  const EditRow &editor, QWidget *parent = nullptr);
    ~frm施術者検索() override;

    short iInit() override;

protected:
    Result<Recordset> readList() override;
    QString emptyText() const override;
    QString summary() const override;

private:
    short loadOffices();
    short iMastDataLoad();
    void wire();
    StaffConditions typed() const;

    std::unique_ptr<Ui::StaffConditions> m_ui;
    cT_ADODB &m_db;
    const Environment &m_environment;
    bool m_allOffices;
    qint64 m_consultation;
    StaffChoice *m_staff;
    StaffConditions m_read; ///< the conditions of the rows shown
};
