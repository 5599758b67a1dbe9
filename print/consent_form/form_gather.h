#pragma once

#include "db/tables/keys.h"
#include "print/consent_form/form_options.h"
#include "print/engine/data_file.h"

#include <QString>
#include <vector>

class cT_ADODB;

/// One consent form that can be printed: the patient, the layout and the values of consentFormColumns().
struct ConsentForm {
    PatientKey patient;
    QString name;
    qint32 consentKey = 0; ///< nDate of the consent row that the form asks for; 0 without one
    bool acupuncture = false;
    bool oral = false;
    QString layout;        ///< file name in the system folder
    qint32 formNumber = 0; ///< of the form master; 0 for the fixed layouts of oral consents
    /// The QR code's place is empty until the data are written.
    std::vector<DataValue> values;
};

/// A patient who matches and gets no form.
struct LeftOutPatient {
    enum class Why {
        Oral,     ///< consents by word of mouth
        NoLayout, ///< no consent form is registered for the kind of treatment
    };
    PatientKey patient;
    QString name;
    bool acupuncture = false;
    Why why = Why::Oral;
};

struct GatheredForms {
    std::vector<ConsentForm> forms; ///< in the order asked for
    std::vector<LeftOutPatient> leftOut;

    bool noPatients() const { return forms.empty() && leftOut.empty(); }
};

/// Reads the patients that the options ask for with their newest consents, doctors, staff, company and forms,
/// in one query whatever their number (besides the small tables).
/// @param today printed as 印刷年月日
/// @return 0, or −1 with the reason
short iGatherConsentForms(cT_ADODB &db, const ConsentFormOptions &options, const QDate &today,
                          GatheredForms &gathered, QString &reason);
