#pragma once

#include "app/base/messages.h"

#include <vector>

struct BatchResult;
struct LeftOutPatient;

/// @name Messages of consent form printing, as the screens show them
///@{
/// 「同意書（name）が存在しません。処理を中止します。」
Message layoutMissing(const QString &layout);
/// No consent form is registered for the kind of treatment.
Message formNotRegistered(bool acupuncture);
Message noConsentData();
Message noPatientData();
Message patientReadFailed(const QString &reason);
Message printSettingsUnreadable(const QString &reason);
Message printFailed(const QString &reason);
/// Warning of set printing before it begins; OK or cancel.
Message oralNotPrinted();
Message nothingToPrint();
Message nippouIniMissing();
/// Texts with characters that code page 932 lacks were changed on the forms.
Message textsTouched(const QStringList &texts);
/// Patients who matched and got no form; empty text when there are none.
Message patientsLeftOut(const std::vector<LeftOutPatient> &patients);
/// What a batch printed and what it did not.
Message batchSummary(const BatchResult &result);
///@}
