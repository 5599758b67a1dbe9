#pragma once

#include "consent/record/draft.h"

#include <QString>

class cT_ADODB;

/// Where a read of one row ended.
enum class RowRead { Found, Absent, Failed };

/// Reads the patient's name, treatment kind and end of treatment. On Failed the reason is in the connection's
/// sErrMsg.
RowRead readEntryPatient(cT_ADODB &db, const PatientKey &key, EntryPatient &patient);

/// A doctor as a consent names him.
struct DoctorData {
    QString cName, cAddress1;
    QString cShamei1; ///< the facility; the doctor's own institution where he belongs to none
};
RowRead readDoctorData(cT_ADODB &db, const QString &code, DoctorData &doctor);

/// The branch's default diagnosis for the first consent of a patient; empty when it has none.
/// @return 0, or −1 with the reason in the connection's sErrMsg
short readDefaultDiagnosis(cT_ADODB &db, const EntryPatient &patient, QString &diagnosis);
