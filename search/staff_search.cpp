#include "search/staff_search.h"

#include "search/patient_search.h"

// The two searches word their conditions alike.
QString conditionSummary(const StaffConditions &conditions) {
    PatientConditions alike;
    alike.name = conditions.name;
    alike.kana = conditions.kana;
    alike.staff = conditions.number;
    return conditionSummary(alike);
}
