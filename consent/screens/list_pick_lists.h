#pragma once

#include "consent/list/list_filter_panel.h"
#include "search/master_search_form.h"
#include "search/patient_search_form.h"
#include "search/staff_search_form.h"

/// The pick lists behind the filter's selection buttons.
struct PickLists {
    PickLists(cT_ADODB &db, const Environment &environment)
        : doctor(Master::Doctor, db, environment),
          hospital(Master::Hospital, db, environment),
          facility(Master::LivingFacility, db, environment),
          staff(db, environment),
          insurer(Master::Insurer, db, environment),
          counsellor(Master::Counsellor, db, environment),
          patient(db, environment) {}

    ListSearches searches(Messages &messages) {
        return {codeSearch(doctor, messages),   codeSearch(hospital, messages),
                codeSearch(facility, messages), codeSearch(staff, messages),
                codeSearch(insurer, messages),  codeSearch(counsellor, messages),
                codeSearch(patient, messages)};
    }

    MasterSearch doctor;
    MasterSearch hospital;
    MasterSearch facility;
    cls施術者検索 staff;
    MasterSearch insurer;
    MasterSearch counsellor;
    cls患者検索 patient;
};
