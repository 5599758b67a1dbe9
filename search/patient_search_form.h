#pragma once

#include "search/search_class.h"
#include "search/search_conditions.h"
#include "widgets/pick_list_form.h"

class StaffChoice;
namespace Ui {
class PatientConditions;
}

/// The patient search: opens frm患者検索 and holds the patient that was taken.
class cls患者検索 : public SearchClass {
public:
    using SearchClass::SearchClass;

    /// 0: the current office alone; otherwise a chosen staff member is looked for in every office.
    short iArea = 0;
    /// The chosen patient number, 0 when nothing was chosen.
    qint64 nSeledCD = 0;
    const QString &csSeledName() const { return seled().name; }
    /// The office of the chosen patient.
    const Branch &seledOffice() const { return m_office; }

    /// @name Name of a patient of the current office
    ///@{
    /// 0, or −1 with CsErrStr when there is no such patient.
    short iSetRiyouName(qint64 nIDNo, QString &csName);
    /// As iSetRiyouName for a typed number; empty when there is none.
    QString csSetRiyouName_Text(const QString &csIDNo);
    /// As iSetRiyouName, with the reading.
    short iSetRiyouName2(qint64 nIDNo, QString &csName, QString &csNameKana);
    ///@}

    CodeLookup lookup(const QString &code) override;

protected:
    std::unique_ptr<PickListForm> makeForm(QWidget *parent) override;
    void taken(const PickListForm &form) override;

private:
    Branch m_office;
};

/// The form of the patient search.
class frm患者検索 : public PickListForm {
public:
    /// @param editor of the office's patients; may be empty
    frm患者検索(cT_ADODB &db, const Environment &environment, short iArea, const EditRow &editor,
                QWidget *parent = nullptr);
    ~frm患者検索() override;

    short iInit() override;

protected:
    Result<Recordset> readList() override;
    QString emptyText() const override;
    QString summary() const override;

private:
    short iMastDataLoad();
    void wire();
    PatientConditions typed() const;

    std::unique_ptr<Ui::PatientConditions> m_ui;
    cT_ADODB &m_db;
    const Environment &m_environment;
    bool m_allOffices;
    StaffChoice *m_staff;
    PatientConditions m_read; ///< the conditions of the rows shown
};
