#pragma once

#include "db/tables/keys.h"

class QWidget;
class cT_ADODB;
struct Environment;

/// Shows and stores the company's consent-form settings, those of the current branch. What a colleague has
/// changed meanwhile is not overwritten; that and failures are said.
void setCompanyConsentForms(Environment &environment, cT_ADODB &db, QWidget *parent);

/// Asks, shows a patient's consent forms, and stores what was chosen there as the patient's own settings,
/// unless nothing was changed. As above, a colleague's changes stay, and failures are said.
void setPatientConsentForms(Environment &environment, cT_ADODB &db, const PatientKey &patient,
                            QWidget *parent);
