#pragma once

#include "app/base/result.h"
#include "consent/record/draft.h"

#include <QString>
#include <optional>

class cT_ADODB;

/// Reads the patient's name, treatment kind and end of treatment; nothing when there is no such patient.
Result<std::optional<EntryPatient>> readEntryPatient(cT_ADODB &db, const PatientKey &key);

/// A doctor as a consent names him.
struct DoctorData {
    QString cName, cAddress1;
    QString cShamei1; ///< the facility; the doctor's own institution where he belongs to none
};
/// Nothing when no doctor has the code.
Result<std::optional<DoctorData>> readDoctorData(cT_ADODB &db, const QString &code);

/// The branch's default diagnosis for the first consent of a patient; empty when it has none.
Result<QString> readDefaultDiagnosis(cT_ADODB &db, const EntryPatient &patient);
