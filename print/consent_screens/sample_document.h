#pragma once

#include "db/tables/consent_layout_settings.h"
#include "print/consent_form/registered_forms.h"
#include "print/engine/data_file.h"
#include "print/engine/print_files.h"

class cls_WfdPrintExe;
struct Environment;

/// What stands on a sample consent form.
struct SampleContents {
    bool treatment = true, doctor = true, patientNumber = false;

    /// What was never set stays.
    static SampleContents of(const ConsentLayoutSettings &settings);
};

/// The names under which the engine gets a document's data.
struct DocumentNames {
    QString title; ///< of the viewer
    QString data;  ///< data name
    QString file;  ///< data file
};

/// Puts the data of an invented patient, marked as a sample, into the engine's first slot: a consent form of
/// a layout.
Result<> writeSampleForm(const Environment &environment, const RegisteredForm &layout,
                         const SampleContents &contents, const DocumentNames &names, cls_WfdPrintExe &engine);
/// The same for a request letter.
Result<> writeSampleLetter(const Environment &environment, const RegisteredForm &layout,
                           const DocumentNames &names, cls_WfdPrintExe &engine);
