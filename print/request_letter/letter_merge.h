#pragma once

#include "print/engine/data_file.h"

#include <functional>
#include <span>

struct Environment;

/// The letters of one layout.
struct LetterSheet {
    QString layout; ///< full path
    QString file;   ///< full path of the data file
    DataFile data;
};

/// Lets the engine's image builder make one document of several sheets, whose data files are written, and
/// waits until it is there.
/// @param goOn called many times a second; false gives it up
/// @return the document's full path; empty when it could not be made, with a reason unless it was given up
QString mergeLetters(const Environment &environment, const QString &dataName,
                     std::span<const LetterSheet> sheets, const std::function<bool()> &goOn, QString *reason);
