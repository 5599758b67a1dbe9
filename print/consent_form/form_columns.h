#pragma once

#include "db/tables/masters/corp.h"
#include "print/consent_form/form_choice.h"
#include "print/consent_form/form_record.h"
#include "print/engine/data_file.h"

#include <QDate>
#include <QStringList>
#include <vector>

/// The 100 items of the consent form's data file, in order.
const QStringList &consentFormColumns();

/// Position of QRコード, whose picture is made when the data are written.
qsizetype qrColumn();

/// What a form is filled from, besides the patient's record.
struct FormSource {
    const FormRecords &rows;
    int record;
    int correction; ///< record of the correction whose period stands on the form; may be `record`
    const FormChoice &choice;
    const cD_CORP *practice; ///< company of the patient's branch; may be null
    const cD_CORP *sender;   ///< printing company; null: not printed
    QString walking;         ///< how the patient walks, in words
    QDate submitted;
    QDate today;
};

/// The values of one form.
std::vector<DataValue> consentFormValues(const FormSource &source);
