#pragma once

#include "app/base/messages.h"

#include <vector>

struct LeftOutPatient;

/// @name Messages of consent form printing, as the screens show them
///@{
/// No consent form is registered for the kind of treatment.
Message formNotRegistered(bool acupuncture);
Message noConsentData();
Message noPatientData();
Message patientReadFailed(const QString &reason);
Message printSettingsUnreadable(const QString &reason);
Message nippouIniMissing();
/// Patients who matched and got no form; empty text when there are none.
Message patientsLeftOut(const std::vector<LeftOutPatient> &patients);
///@}
