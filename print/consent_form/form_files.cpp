#include "print/consent_form/form_files.h"

#include "app/base/folders.h"
#include "print/consent_form/form_columns.h"
#include "print/consent_form/qr_code.h"
#include "print/documents/lost_texts.h"
#include "print/engine/engine_programs.h"
#include "print/engine/wfd_print_exe.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A correction's form may lie beside the massage's.
QString patientFile(const ConsentForm &form, const QString &rest) {
    const QString correction = form.consent.iHenkeiFlg == 0 ? QString() : u"変形_"_s;
    return QString::number(form.patient.nIDNo) + u'_' + correction + rest;
}

DataFile emptyData() {
    static const DataFile empty(consentFormColumns()); // its header is written once
    return empty;
}

/// Writes the form's QR picture and adds its values with the picture's path.
Result<> addForm(const ConsentForm &form, PrintFiles &files, DataFile &data) {
    const Result<QString> picture = files.write(patientFile(form, u"QR.bmp"_s), qrPicture(qrContent(form)));
    if (!picture)
        return Failure{picture.reason()};
    std::vector<DataValue> values = form.values;
    values[size_t(qrColumn())] = *picture;
    data.add(values);
    return {};
}

} // namespace

QString consentFormDataName() {
    return u"同意書データ"_s;
}

QString qrImageItem() {
    return u"QRコード"_s;
}

QString layoutPath(const Folders &folders, const ConsentForm &form) {
    return Folders::file(folders.system(), form.layout);
}

std::vector<const ConsentForm *> withoutLayoutFile(const Folders &folders,
                                                   const std::vector<ConsentForm> &forms) {
    QHash<QString, bool> present; // a few layouts serve all patients
    std::vector<const ConsentForm *> missing;
    for (const ConsentForm &form : forms) {
        auto known = present.constFind(form.layout);
        if (known == present.constEnd())
            known = present.insert(form.layout, QFileInfo(layoutPath(folders, form)).isFile());
        if (!known.value())
            missing.push_back(&form);
    }
    return missing;
}

QString replacedNote(const Environment &environment, const std::vector<ConsentForm> &forms) {
    if (isOwnViewer(environment))
        return {};
    DataFile data = emptyData();
    for (const ConsentForm &form : forms)
        data.add(form.values);
    return replacedNote(environment, data.replaced());
}

Result<> writeConsentFormData(const std::vector<ConsentForm> &forms, cls_WfdPrintExe &engine) {
    DataFile data = emptyData();
    for (const ConsentForm &form : forms)
        if (const Result<> added = addForm(form, engine.files(), data); !added)
            return added;
    return engine.iWriteData(1, consentFormDataName(), data) == 0 ? Result<>() : Failure{engine.sErrMsg()};
}

Result<QString> writeConsentFormData(const ConsentForm &form, PrintFiles &files) {
    DataFile data = emptyData();
    if (const Result<> added = addForm(form, files, data); !added)
        return Failure{added.reason()};
    return files.write(patientFile(form, consentFormDataName() + u".csv"_s), data);
}

Result<BatchReport> makeFormReport(const Folders &folders, const ConsentForm &form, PrintFiles &files) {
    BatchReport report;
    report.subject = u"%1　%2"_s.arg(form.patient.nIDNo).arg(form.name);
    report.name = u"同意書"_s;
    report.dataName = consentFormDataName();
    report.imageItem = qrImageItem();
    report.layout = QDir::toNativeSeparators(layoutPath(folders, form));
    const Result<QString> file = writeConsentFormData(form, files);
    if (!file)
        return Failure{file.reason()};
    report.dataFile = *file;
    return report;
}
