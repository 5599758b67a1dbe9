#pragma once

#include "export/make_csv.h"

class Folders;

enum class CsvFileType { Csv, Text };

/// What was chosen when a grid was last saved.
struct CsvSettings {
    QString folder;
    QString fileName;
    CsvFileType type = CsvFileType::Csv;
    CsvFormat format;
    bool openFolder = false;

    /// @name The stored numbers of the delimiter and of the further options
    ///@{
    int section() const;
    int etc() const;
    void setSection(int section);
    void setEtc(int etc);
    ///@}
};

/// Reads DataFile.ini of the settings folder. A line that is missing or holds no number of its choice gives
/// the default; a failure is a file that is there and cannot be read.
Result<CsvSettings> readCsvSettings(const Folders &folders);

/// Writes its six lines, whole.
Result<> writeCsvSettings(const Folders &folders, const CsvSettings &settings);
