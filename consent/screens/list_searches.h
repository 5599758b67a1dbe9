#pragma once

#include "consent/list/list_filter_panel.h"
#include "search/master_search_form.h"
#include "search/patient_search_form.h"
#include "search/staff_search_form.h"

/// The pick lists behind the filter's selection buttons. Outlives the panel that uses them.
class ListSearchForms {
public:
    ListSearchForms(cT_ADODB &db, const Environment &environment);

    ListSearches searches(Messages &messages);

private:
    MasterSearch m_doctor;
    MasterSearch m_hospital;
    MasterSearch m_facility;
    cls施術者検索 m_staff;
    MasterSearch m_insurer;
    MasterSearch m_counsellor;
    cls患者検索 m_patient;
};
