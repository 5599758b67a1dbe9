#pragma once

#include "search/staff_search_form.h"

#include <QDialog>

class PickedList;
class QCheckBox;

/// Asks for the practitioners who limit the consent list, in order. Shown modally by exec(); Accepted when
/// the choice is to hold.
class frmTantouExtra : public QDialog {
public:
    frmTantouExtra(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);

    /// Puts what holds so far into the controls. 0.
    short iControlInit(const std::vector<CodeName> &staff, bool inOrder);
    /// Shows the list and how many it holds anew. 0.
    short iRefreshView();
    /// Moves the current practitioner one place up (−1) or down (1). 0, or −1 at the end, which is said.
    short iTantouSort(int by);
    /// Looks a number up in the branch.
    CodeLookup vCheckStaff(const QString &number);

    const std::vector<CodeName> &staff() const;
    /// The list is to come in their order.
    bool inOrder() const;

    /// Takes a number that is still being typed.
    void accept() override;
    /// Leaves; a choice that was changed is asked about.
    void reject() override;

private:
    void layOut();

    Environment &m_environment;
    cT_ADODB &m_db;
    cls施術者検索 m_search;
    std::vector<CodeName> m_staffBefore;
    bool m_inOrderBefore = false;
    PickedList *m_list;
    QCheckBox *m_inOrder;
};
