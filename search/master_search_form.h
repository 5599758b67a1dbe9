#pragma once

#include "search/master_query.h"
#include "search/search_class.h"

#include <functional>

/// Shows a row of a master to be edited, or without a code a new one; gives the code of what was saved.
using EditMasterRow = std::function<std::optional<QString>(const QString &code, QWidget *parent)>;

/// The search in one of the masters that need no conditions: doctors, hospitals, living facilities, insurers,
/// counsellors.
class MasterSearch : public SearchClass {
public:
    MasterSearch(Master master, cT_ADODB &db, const Environment &environment)
        : SearchClass(db, environment), m_master(master) {}

    CodeLookup lookup(const QString &code) override;

    /// Lets the pick list offer to enter a row and to edit the current one.
    void setEditor(EditMasterRow edit) { m_edit = std::move(edit); }

protected:
    std::unique_ptr<PickListForm> makeForm(QWidget *parent) override;

private:
    Master m_master;
    EditMasterRow m_edit;
};
