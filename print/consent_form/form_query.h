#pragma once

#include "print/consent_form/form_options.h"

#include <QString>

/// The one SELECT of a batch; its columns are those of FormRecords, in their order.
QString consentFormSql(const ConsentFormOptions &options);
