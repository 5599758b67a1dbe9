#pragma once

#include "app/base/settings.h"
#include "print/consent_form/form_options.h"

#include <algorithm>

/// What stands on consent forms, as the screens that print them keep it.
struct FormContents {
    FormStyle style = FormStyle::ByPatient;
    OralForms oral = OralForms::None;
    bool treatmentContent = true;
    bool doctorBlock = true;
    bool ignoreLayoutSettings = false;
    bool company = true;
    bool patientSettings = true;

    /// What is not stored, or means nothing, stays as it is.
    void read(const SettingsSection &section);
    SettingsEntries entries() const;
    /// Puts them into options; the sender stays as it is where it is switched on, and goes where it is off.
    void applyTo(ConsentFormOptions &options) const;
};

/// The last choices of the printing screen: section 同意書 of 印刷設定.ini.
struct ConsentPrintSettings : FormContents {
    TreatmentKind kind = TreatmentKind::Massage;
    FormOrder order = FormOrder::Number;
    bool doctorSettings = false; ///< written only: every session starts without
    qint32 patient = 0;          ///< last patient printed; 0 none
    bool submissionDate = false; ///< whether one is printed
    QDate submitted{};           ///< the one printed last; invalid: none is kept

    /// Reads the stored choices; what is missing or means nothing keeps its default.
    /// A failure where there is no such file or it cannot be read.
    Result<> read(const Folders &folders);
    /// Writes all of them back; a missing file is made.
    Result<> write(const Folders &folders) const;

    /// The submission date to offer: the one printed last, as long as it has not passed.
    QDate submissionFor(const QDate &today) const { return std::max(submitted, today); }

    /// Puts them into options, with the contents.
    void applyTo(ConsentFormOptions &options) const;
};

/// Stores whether a submission date is printed, and nothing else of the printing screen's choices.
Result<> keepSubmissionSwitch(const Folders &folders, bool on);

/// What the printing screens read of 患者管理設定.ini.
struct PatientManagementSettings {
    bool niigata = false;     ///< [ENTRY] 新潟対応
    bool oralSaitama = false; ///< [ENTRY] or [同意記録] 埼玉口頭同意: oral consents have fixed layouts
    bool consentRecord = false; ///< [ENTRY] 同意記録
    int company = 0;            ///< [同意記録] 同意印刷本社No: position of the sender in the list

    Result<> read(const Folders &folders);
    Result<> writeOralSaitama(const Folders &folders, bool on) const;
};
