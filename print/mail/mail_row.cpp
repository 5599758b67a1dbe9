#include "print/mail/mail_row.h"

#include "print/mail/mail_text.h"

QString MailRow::who() const {
    return QString::number(patient.nIDNo) + u' ' + onOneLine(name);
}
