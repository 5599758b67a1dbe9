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

/// Paper of a single document by the layout's name: "_B5" 2 (B5), "_A5" 1 (A5), otherwise 0 (A4).
int paperCode(const QString &layout);

/// Writes the QR images and "同意書データ.csv" of single documents into the work folder.
/// @param touched gains the texts in which a character that code page 932 lacks was replaced
bool writeConsentFormData(const Folders &folders, const std::vector<ConsentForm> &forms, QStringList &touched,
                          QString *reason);

/// The same for one form of a batch, as "<number>_同意書データ.csv", whose full path is given.
bool writeConsentFormData(const Folders &folders, const ConsentForm &form, QString &path,
                          QStringList &touched, QString *reason);
