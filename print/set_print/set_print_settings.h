#pragma once

#include "print/consent_form/print_settings.h"

/// The choices of set printing, setprintdoui.ini in the data folder.
struct SetPrintSettings : FormContents {
    bool consentForms = true;
    bool requestLetters = false;
    bool envelopes = false;
    bool largeEnvelopes = false;  ///< 角形2号, not 長形3号
    bool progressReports = false; ///< 経過報告書
    bool customPaper = false;     ///< the engine's paper #256 instead of A4
    bool preview = true;          ///< show, not print

    /// What the file does not hold keeps its default; of the forms' contents, the printing screen's.
    void read(const Folders &folders, const FormContents &printing);
    Result<> write(const Folders &folders) const;
};

/// Kind of treatment progress report: [同意記録管理] 施術経過報告書帳票種類 of 印刷設定.ini; 0 when absent.
int progressReportKind(const Folders &folders);

/// Whether nippou.ini lies in the data folder; set printing stops without it.
bool hasNippouIni(const Folders &folders);
