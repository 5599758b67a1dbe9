#include "print/consent_form/form_files.h"

#include "app/base/file_write.h"
#include "app/base/folders.h"
#include "print/consent_form/form_columns.h"
#include "print/consent_form/qr_code.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <span>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A file of the patient's in the work folder. Its name is the program's own, so that none is looked for in
/// other spellings: with thousands of files there, that would take the longest.
QString patientFile(const Folders &folders, const ConsentForm &form, const QString &rest) {
    return folders.temporary() + u'/' + QString::number(form.patient.nIDNo) + u'_' + rest;
}

/// Writes the form's QR picture and adds its values with the picture's path.
/// @param writeFile whole and moved where an earlier viewer may be reading the file, in its place in a batch
bool addForm(const Folders &folders, const ConsentForm &form, DataFile &data, WriteFile writeFile,
             QString *reason) {
    const QString picture = patientFile(folders, form, u"QR.bmp"_s);
    if (!writeFile(picture, qrPicture(qrContent(form)), reason))
        return false;
    std::vector<DataValue> values = form.values;
    values[size_t(qrColumn())] = QDir::toNativeSeparators(picture);
    data.add(values);
    return true;
}

bool write(const Folders &folders, std::span<const ConsentForm> forms, const QString &path,
           WriteFile writeFile, QStringList &touched, QString *reason) {
    static const DataFile empty(consentFormColumns()); // its header is written once
    DataFile data = empty;
    for (const ConsentForm &form : forms)
        if (!addForm(folders, form, data, writeFile, reason))
            return false;
    if (!writeFile(path, data.bytes(), reason))
        return false;
    touched += data.touched();
    return true;
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

bool writeConsentFormData(const Folders &folders, const std::vector<ConsentForm> &forms, QStringList &touched,
                          QString *reason) {
    const QString path = Folders::file(folders.temporary(), consentFormDataName() + u".csv"_s);
    return write(folders, forms, path, writeFileWhole, touched, reason);
}

bool writeConsentFormData(const Folders &folders, const ConsentForm &form, QString &path,
                          QStringList &touched, QString *reason) {
    path = patientFile(folders, form, consentFormDataName() + u".csv"_s);
    return write(folders, {&form, 1}, path, writeFileInPlace, touched, reason);
}
