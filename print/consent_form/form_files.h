#pragma once

#include "print/batch/batch_print.h"
#include "print/consent_form/form_gather.h"
#include "print/engine/print_files.h"

class Folders;
class cls_WfdPrintExe;

/// Names that the layouts bind.
QString consentFormDataName(); ///< "同意書データ"
QString qrImageItem();         ///< "QRコード"

/// Full path of the form's layout, whose file may be missing.
QString layoutPath(const Folders &folders, const ConsentForm &form);
/// The forms whose layout file is missing.
std::vector<const ConsentForm *> withoutLayoutFile(const Folders &folders,
                                                   const std::vector<ConsentForm> &forms);

/// replacedNote() of all that stands on the forms.
QString replacedNote(const Environment &environment, const std::vector<ConsentForm> &forms);

/// Writes the QR pictures and "同意書データ.csv" for a document that the engine shows, and names it in its
/// first slot.
Result<> writeConsentFormData(const std::vector<ConsentForm> &forms, cls_WfdPrintExe &engine);

/// The same for one form of a batch: "<patient number>_同意書データ.csv" or "<patient
/// number>_変形_同意書データ.csv" among the batch's files.
/// @return full path of the data file
Result<QString> writeConsentFormData(const ConsentForm &form, PrintFiles &files);

/// Writes the data of one form of a batch and describes its report.
Result<BatchReport> makeFormReport(const Folders &folders, const ConsentForm &form, PrintFiles &files);
