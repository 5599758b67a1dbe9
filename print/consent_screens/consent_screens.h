#pragma once

class QWidget;
class cT_ADODB;
struct Environment;

/// Shows and stores the company's consent-form settings, those of the current branch. What a colleague has
/// changed meanwhile is not overwritten; that and failures are said.
void setCompanyConsentForms(Environment &environment, cT_ADODB &db, QWidget *parent);
