#include "print/mail/mail_row.h"

#include "db/tables/patient_text.h"
#include "print/mail/mail_text.h"

QString MailRow::who() const {
    return patientText(patient.nIDNo, onOneLine(name));
}
