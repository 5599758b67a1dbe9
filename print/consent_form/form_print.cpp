#include "print/consent_form/form_print.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "print/consent_form/form_files.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

Result<QStringList> printForm(const Environment &environment, const ConsentForm &form, PrintWay way) {
    const QString layout = layoutPath(environment.folders, form);
    QStringList touched;
    cls_WfdPrintExe engine(environment);
    engine.iInit(QDir::toNativeSeparators(layout), u"同意書印刷"_s);
    if (const Result<> written = writeConsentFormData({form}, engine, touched); !written)
        return Failure{written.reason()};
    if (engine.iPutOut(way) != 0)
        return Failure{engine.sErrMsg()};
    return touched;
}

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
