#pragma once

#include "search/master_query.h"
#include "search/search_class.h"

/// The search in one of the masters that need no conditions: doctors, hospitals, living facilities, insurers,
/// counsellors.
class MasterSearch : public SearchClass {
public:
    MasterSearch(Master master, cT_ADODB &db, const Environment &environment)
        : SearchClass(db, environment), m_master(master) {}

    CodeLookup lookup(const QString &code) override;

protected:
    std::unique_ptr<PickListForm> makeForm(QWidget *parent) override;

private:
    Master m_master;
};
