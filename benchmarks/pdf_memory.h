#pragma once

#include "benchmarks/figures.h"

#include <QString>
#include <QStringList>
#include <optional>

/// Writes a command file's document to a PDF.
void toPdf(const QString &command, const QString &path);

/// Checks that a document becomes a PDF in less than 300 MB of memory. It is written by a process of its own:
/// the program itself, whose main begins with asPdfWriter.
void checkPdfMemory(Figures &figures, const char *name, const QString &command, const QString &path);

/// The exit code where the program is that process.
std::optional<int> asPdfWriter(const QStringList &arguments);
