#pragma once

#include "consent/list/list_filter_panel.h"
#include "masters/master_editor.h"
#include "search/patient_search_form.h"
#include "search/staff_search_form.h"

/// The pick lists behind the filter's selection buttons.
struct PickLists {
    /// @param changed called after a row of a master was entered or edited there
    PickLists(cT_ADODB &db, Environment &environment, std::function<void()> changed)
        : editor(environment, db, std::move(changed)),
          doctor(Master::Doctor, db, environment),
          hospital(Master::Hospital, db, environment),
          facility(Master::LivingFacility, db, environment),
          staff(db, environment),
          insurer(Master::Insurer, db, environment),
          counsellor(Master::Counsellor, db, environment),
          patient(db, environment) {
        editor.offer(doctor, MasterKind::Doctor);
        editor.offer(hospital, MasterKind::Facility);
        editor.offer(facility, MasterKind::Facility);
        editor.offer(counsellor, MasterKind::Counsellor);
        editor.offer(staff, MasterKind::Staff);
        editor.offer(patient, MasterKind::Patient);
    }

    ListSearches searches(Messages &messages) {
        return {codeSearch(doctor, messages),   codeSearch(hospital, messages),
                codeSearch(facility, messages), codeSearch(staff, messages),
                codeSearch(insurer, messages),  codeSearch(counsellor, messages),
                codeSearch(patient, messages)};
    }

    MasterEditor editor;
    MasterSearch doctor;
    MasterSearch hospital;
    MasterSearch facility;
    cls施術者検索 staff;
    MasterSearch insurer;
    MasterSearch counsellor;
    cls患者検索 patient;
};
