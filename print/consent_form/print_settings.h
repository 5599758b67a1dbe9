#pragma once

#include "app/base/result.h"
#include "print/consent_form/form_options.h"

#include <algorithm>

class Folders;

/// The last choices of the printing screen: section 同意書 of 印刷設定.ini.
struct ConsentPrintSettings {
    TreatmentKind kind = TreatmentKind::Massage;
    FormOrder order = FormOrder::Number;
    FormStyle style = FormStyle::ByPatient;
    OralForms oral = OralForms::None;
    bool treatmentContent = true;
    bool doctorBlock = true;
    bool ignoreLayoutSettings = false;
    bool company = true;
    bool patientSettings = true;
    bool doctorSettings = false; ///< written only: every session starts without
    qint32 patient = 0;          ///< last patient printed; 0 none
    bool submissionDate = false; ///< whether one is printed
    QDate submitted;             ///< the one printed last; invalid: none is kept

    /// Reads the stored choices; what is missing or means nothing keeps its default.
    /// A failure where there is no such file or it cannot be read.
    Result<> read(const Folders &folders);
    /// Writes all of them back; a missing file is made.
    Result<> write(const Folders &folders) const;

    /// The submission date to offer: the one printed last, as long as it has not passed.
    QDate submissionFor(const QDate &today) const { return std::max(submitted, today); }

    /// Puts them into options, the sender company left as it is where it is switched on and emptied where it
    /// is off.
    void applyTo(ConsentFormOptions &options) const;
};

/// What the printing screens read of 患者管理設定.ini.
struct PatientManagementSettings {
    bool niigata = false;     ///< [ENTRY] 新潟対応
    bool oralSaitama = false; ///< [ENTRY] or [同意記録] 埼玉口頭同意: oral consents have fixed layouts
    bool consentRecord = false; ///< [ENTRY] 同意記録
    int company = 0;            ///< [同意記録] 同意印刷本社No: position of the sender in the list

    Result<> read(const Folders &folders);
    Result<> writeOralSaitama(const Folders &folders, bool on) const;
};

/// The choices of set printing, setprintdoui.ini in the data folder.
struct SetPrintSettings {
    bool consentForms = true;
    bool requestLetters = false;
    bool envelopes = false;
    bool largeEnvelopes = false;  ///< 角形2号, not 長形3号
    bool progressReports = false; ///< 経過報告書
    /// @name What stands on the consent forms
    ///@{
    FormStyle style = FormStyle::ByPatient;
    OralForms oral = OralForms::None;
    bool treatmentContent = true;
    bool doctorBlock = true;
    bool company = true;
    bool patientSettings = true;
    bool ignoreLayoutSettings = false;
    ///@}
    bool customPaper = false; ///< the engine's paper #256 instead of A4
    bool preview = true;      ///< show, not print

    /// What the file does not hold keeps its default; of the forms' choices, the printing screen's.
    void read(const Folders &folders, const ConsentPrintSettings &printing);
    /// Puts the forms' choices into the printing screen's.
    void applyTo(ConsentPrintSettings &form) const;
    Result<> write(const Folders &folders) const;
};

/// Kind of treatment progress report: [同意記録管理] 施術経過報告書帳票種類 of 印刷設定.ini; 0 when absent.
int progressReportKind(const Folders &folders);

/// Whether nippou.ini lies in the data folder; set printing stops without it.
bool hasNippouIni(const Folders &folders);
