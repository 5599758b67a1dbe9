#pragma once

#include "print/consent_form/form_gather.h"

#include <QStringList>

class Folders;

/// Names that the layouts bind.
QString consentFormDataName(); ///< "同意書データ"
QString qrImageItem();         ///< "QRコード"

/// Full path of the form's layout, whose file may be missing.
QString layoutPath(const Folders &folders, const ConsentForm &form);
/// The forms whose layout file is missing.
std::vector<const ConsentForm *> withoutLayoutFile(const Folders &folders,
                                                   const std::vector<ConsentForm> &forms);

/// Writes the QR pictures of single documents and "同意書データ.csv" into the work folder.
/// @param touched gains the texts in which a character that code page 932 lacks was replaced
/// @param reason a sentence that names the file, when false is given
bool writeConsentFormData(const Folders &folders, const std::vector<ConsentForm> &forms, QStringList &touched,
                          QString *reason);

/// The same for one form of a batch.
/// @param path of the data file, "<patient number>_同意書データ.csv" in the work folder
bool writeConsentFormData(const Folders &folders, const ConsentForm &form, QString &path,
                          QStringList &touched, QString *reason);
