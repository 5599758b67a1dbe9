#pragma once

#include "viewer/data/data_table.h"
#include "viewer/document/document.h"

#include <optional>

/// A data source as a command file names it.
struct SourceOrder {
    QString name;
    QString path;
    DataFormat format;
};

/// One report of a command file.
struct ReportOrder {
    QString layout; ///< path
    QString title;
    std::vector<SourceOrder> sources;
    std::vector<ItemValue> values;
    QStringList imageItems; ///< items whose value is a picture's path
};

enum class JobAction { Show, Print, PrintWithDialog };

/// What a command file asks for.
struct Job {
    QString title;
    std::vector<ReportOrder> reports;
    int offsetX = 0, offsetY = 0; ///< tenths of a millimetre
    int zoom = 2;                 ///< 2 actual size, 10 and more percent
    int repeatStart = 0;
    QString paper; ///< A3 to A5, B4, B5, #256 (the layout's own); empty when none is asked for
    std::optional<JobAction> action; ///< none in a file for the image builder
    int windowStyle = 0;

    /// Millimetres; empty when the paper is the layout's own or none is asked for.
    QSizeF paperSize() const;
};

/// Reads a command file (code page 932). Keywords ignore case. A report's settings stand before AddReport or
/// the file's end, in any order; a line that stands twice does what it does once.
/// @param problem filled with the line when a command is unknown, cut off or wrongly quoted
std::optional<Job> readCommandFile(const QByteArray &bytes, const QString &name, Problem *problem);
