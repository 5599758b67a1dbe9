#pragma once

#include "app/base/file_write.h"
#include "viewer/window/page_printer.h"

#include <QString>

class QWidget;

/// Output with what the user sees of it: dialogs, progress that can be cancelled, and what went wrong.

enum class OutputEnd { Done, Cancelled, Failed };

bool hasPrinter();

/// Shows the printer dialog and prints what was chosen there.
/// @param currentPage from 0; −1 when no page is on show
OutputEnd printFromDialog(const Document &document, const PrintAdjustment &adjustment, int currentPage,
                          QWidget *parent);

/// Prints all pages on the default printer; without one the dialog asks for a printer.
OutputEnd printAtOnce(const Document &document, const PrintAdjustment &adjustment);

OutputEnd savePdf(const Document &document, const QString &path, FileUse use, QWidget *parent);

/// Where a user is offered to keep a document, under its own name: in his documents, since the work folder is
/// cleared.
QString proposedPdfPath(const Document &document);

/// Asks where a PDF shall lie, with ".pdf" after a name without an extension. Empty when the user gives up.
QString askPdfPath(const QString &title, const QString &proposed, QWidget *parent);
