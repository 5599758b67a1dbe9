#pragma once

#include "app/base/result.h"

#include <QByteArray>
#include <QString>

struct Environment;

/// The files of one run of printing in the work folder: data and pictures that the image builder reads.
class PrintFiles {
public:
    explicit PrintFiles(const Environment &environment);

    /// Writes a file and gives its full path, as command and data files name it.
    Result<QString> write(const QString &name, const QByteArray &bytes);

private:
    QString m_folder; ///< with its closing separator
};
