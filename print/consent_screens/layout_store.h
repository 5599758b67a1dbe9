#pragma once

#include "app/base/result.h"
#include "db/tables/consent_layout_settings.h"
#include "db/tables/keys.h"

class cT_ADODB;

/// The company's settings, those of a branch; none is set where the branch has no row yet.
Result<ConsentLayoutSettings> readCompanyLayouts(cT_ADODB &db, const Branch &branch);

/// @name Storing the twelve settings in one transaction
/// Nothing else of the row is touched.
/// @param seen what stood there when the user began
/// @return false, and nothing written, when it is not what stands there now
///@{
Result<bool> storeCompanyLayouts(cT_ADODB &db, const Branch &branch, const ConsentLayoutSettings &seen,
                                 const ConsentLayoutSettings &settings);
Result<bool> storePatientLayouts(cT_ADODB &db, const PatientKey &patient, const ConsentLayoutSettings &seen,
                                 const ConsentLayoutSettings &settings);
///@}
