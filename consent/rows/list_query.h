#pragma once

#include "app/base/branch.h"
#include "consent/rows/list_filter.h"

#include <QString>

/// The SELECT that fills the consent list: patients of the branch with their consents, doctors, hospitals,
/// staff and counsellors.
QString listSql(const Branch &branch, const ListFilter &filter);

/// Identity and summary consents of one patient, for the jump to a patient.
QString patientJumpSql(const Branch &branch, qint32 patient);
