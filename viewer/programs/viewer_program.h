#pragma once

#include <QStringList>

/// What the viewer does from its arguments on: `/c COMMANDFILE [/wait SECONDS]`; the seconds bound the wait
/// for a finished document that is still being built (60 without them).
struct ViewerRun {
    QStringList arguments;
    bool headless = false;  ///< no display: a PDF is written instead of a window, a dialog or a print
    bool maximised = false; ///< how a window opens
};

/// @return the exit code: 0, 1 when nothing could be shown or printed (why is told on the standard error
/// stream, and in a box where there is a display), 2 for wrong usage
int runViewer(const ViewerRun &run);

/// The PDF that stands for a window or a printer: beside the command file, named after it or after the
/// finished document that it shows.
QString pdfPathFor(const QString &commandFile, const QString &finishedDocument);
