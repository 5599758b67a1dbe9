#pragma once

#include "app/base/result.h"
#include "db/tables/consent_layout_settings.h"
#include "db/tables/keys.h"
#include "db/tables/masters/corp.h"

class cT_ADODB;

/// What the screen of a patient shows of him, his newest consent and the doctor.
struct PatientConsent {
    QString name;
    bool acupuncture = false;
    QDate firstTreatment;
    bool hasConsent = false;
    ConsentRowKey consent; ///< the newest row that is no correction; means nothing without one
    QDate consentDay;
    Period period;
    QString doctorName, doctorCode, institution; ///< of the doctor asked for; empty when nobody has the code
    ConsentLayoutSettings ofDoctor, ofPatient;

    /// The settings to begin with: the patient's own when any is set, else the doctor's.
    const ConsentLayoutSettings &settings() const { return ofPatient.anySet() ? ofPatient : ofDoctor; }
};

/// @param doctor code of the doctor whose name and settings are wanted
Result<PatientConsent> readPatientConsent(cT_ADODB &db, const PatientKey &patient, const QString &doctor);

/// Code of the doctor who gave the newest consent that is no correction, without a consent of the patient's
/// own row; empty: none.
Result<QString> readConsentingDoctor(cT_ADODB &db, const PatientKey &patient);

/// The branch's own company; nothing when there is none.
Result<std::optional<cD_CORP>> readHeadOffice(cT_ADODB &db, const Branch &branch);

/// A doctor's telephone; empty when nobody has the code.
Result<QString> readDoctorTelephone(cT_ADODB &db, const QString &doctor);

/// Stores the settings of one kind of treatment in a doctor's row; those of the other kind stay.
Result<> writeDoctorLayouts(cT_ADODB &db, const QString &doctor, bool acupuncture,
                            const ConsentLayoutSettings &settings);

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
