#pragma once

#include <QStringList>

/// How the image builder ends; these are its exit codes.
enum class BuildResult {
    Built = 0,        ///< all reports are in the document
    NothingBuilt = 1, ///< the document holds only what went wrong, for the viewer that may wait for it
    WrongUsage = 2,   ///< arguments are missing or wrong; no file was touched
    SomeLeftOut = 3,  ///< the document was built without some reports
};

struct BuildOutcome {
    BuildResult result;
    QStringList messages; ///< a line each; one for every report that was left out
};

/// Merges the reports of a command file and their data into one finished document:
/// `OUTPUT /c COMMANDFILE [/err ERRFILE]`. A document of an earlier run is removed first, so that it is never
/// taken for this one; a file that is none is left alone. The error file (code page 932) is emptied first;
/// after a good run it stays empty. Of a command file that the second step of merged printing has already
/// replaced nothing can be built; that is told at once.
BuildOutcome runImageBuilder(const QStringList &arguments);
