#pragma once

#include "print/consent_form/form_options.h"
#include "print/consent_form/form_record.h"
#include "print/consent_form/registered_forms.h"

#include <QString>
#include <vector>

/// Which form a patient gets, and what it shows.
struct FormChoice {
    QString file;      ///< empty: no form
    qint32 number = 0; ///< 0 for the fixed layouts of oral consents
    bool again = false;
    bool oral = false;
    bool treatment = true; ///< the treatment content
    bool doctor = true;    ///< the doctor's block
    bool patientNumber = false;
};

/// A re-consent is asked for when the patient was treated before the consent that the form prints; without a
/// consent day, when there is a first treatment.
bool isAgain(const FormRecords &rows, int record, FormStyle style);

/// The form that the options pick; without one the layout in this order: the patient's own settings, the
/// doctor's, the patient's layout number, the branch's settings, the first registered form of the kind.
/// Settings count where their switch for the first or the re-consent is on; those that name the layout also
/// say what is shown.
/// @param registered forms of the branch that the options name, in the order of their numbers
FormChoice chooseForm(const FormRecords &rows, int record, FormStyle style, const ConsentFormOptions &options,
                      const std::vector<RegisteredForm> &registered);
