#pragma once

#include "app/base/result.h"
#include "print/consent_form/form_options.h"
#include "print/engine/data_file.h"

#include <QString>
#include <vector>

class cT_ADODB;

/// One consent form that can be printed: the patient, the layout and the values of consentFormColumns().
struct ConsentForm {
    PatientKey patient;
    QString name;
    ConsentRowKey consent; ///< the row that it is made from; its nDate is 0 without one
    /// Positions in ConsentFormOptions::rows that it serves, first the one that it is made from. A correction
    /// asked of the doctor who is asked for the massage has no form of its own.
    std::vector<size_t> rows;
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
        Followed, ///< the row is gone, or a newer one has taken its place
    };
    PatientKey patient;
    QString name;
    bool acupuncture = false;
    Why why = Why::Oral;
    std::optional<size_t> row{}; ///< position in ConsentFormOptions::rows, where rows are given
};

struct GatheredForms {
    std::vector<ConsentForm> forms; ///< in the order asked for
    std::vector<LeftOutPatient> leftOut;

    bool noPatients() const { return forms.empty() && leftOut.empty(); }
};

/// Reads the patients or rows that the options ask for with their consents, doctors, staff, company and
/// forms, in one query whatever their number (besides the small tables).
/// @param today printed as 印刷年月日
Result<GatheredForms> gatherConsentForms(cT_ADODB &db, const ConsentFormOptions &options, const QDate &today);
