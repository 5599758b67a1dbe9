#include "consent/screens/list_searches.h"

ListSearchForms::ListSearchForms(cT_ADODB &db, const Environment &environment)
    : m_doctor(Master::Doctor, db, environment),
      m_hospital(Master::Hospital, db, environment),
      m_facility(Master::LivingFacility, db, environment),
      m_staff(db, environment),
      m_insurer(Master::Insurer, db, environment),
      m_counsellor(Master::Counsellor, db, environment),
      m_patient(db, environment) {}

ListSearches ListSearchForms::searches(Messages &messages) {
    return {codeSearch(m_doctor, messages),   codeSearch(m_hospital, messages),
            codeSearch(m_facility, messages), codeSearch(m_staff, messages),
            codeSearch(m_insurer, messages),  codeSearch(m_counsellor, messages),
            codeSearch(m_patient, messages)};
}
