#pragma once

#include "print/engine/data_file.h"
#include "print/engine/print_files.h"

#include <functional>
#include <span>

struct Environment;

/// The letters of one layout.
struct LetterSheet {
    QString layout; ///< full path
    DataFile data;
};

/// Lets the engine's image builder make one document of several sheets among the files of the run, and waits
/// until it is there.
/// @param goOn called many times a second; false gives it up
/// @return the document's full path; empty when it was given up
Result<QString> mergeLetters(const Environment &environment, const QString &dataName,
                             std::span<const LetterSheet> sheets, PrintFiles &files,
                             const std::function<bool()> &goOn);
