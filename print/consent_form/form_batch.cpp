#include "print/consent_form/form_batch.h"

#include "print/consent_form/form_files.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

Result<BatchReport> makeFormReport(const Folders &folders, const ConsentForm &form, PrintFiles &files,
                                   QStringList &touched) {
    BatchReport report;
    report.subject = u"%1　%2"_s.arg(form.patient.nIDNo).arg(form.name);
    report.name = u"同意書"_s;
    report.dataName = consentFormDataName();
    report.imageItem = qrImageItem();
    report.layout = QDir::toNativeSeparators(layoutPath(folders, form));
    const Result<QString> file = writeConsentFormData(form, files, touched);
    if (!file)
        return Failure{file.reason()};
    report.dataFile = *file;
    return report;
}
