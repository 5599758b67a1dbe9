#include "print/consent_form/form_batch.h"

#include "print/consent_form/form_files.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

bool makeFormReport(const Folders &folders, const ConsentForm &form, BatchReport &report,
                    QStringList &touched, QString *reason) {
    report.subject = u"%1　%2"_s.arg(form.patient.nIDNo).arg(form.name);
    report.name = u"同意書"_s;
    report.dataName = consentFormDataName();
    report.imageItem = qrImageItem();
    report.layout = QDir::toNativeSeparators(layoutPath(folders, form));
    return writeConsentFormData(folders, form, report.dataFile, touched, reason);
}
