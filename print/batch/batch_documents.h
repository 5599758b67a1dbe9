#pragma once

#include "app/base/result.h"

#include <QString>

/// The finished documents of a batch in the work folder, Output0001.wfd and on.
class BatchDocuments {
public:
    /// @param folder with its closing separator
    explicit BatchDocuments(const QString &folder) : m_folder(folder) {}

    /// Full path of the next document: an empty file that no other batch can take. A batch's numbers count
    /// from 1, or on from the last of the documents that lie there.
    Result<QString> next();

private:
    QString m_folder;
    int m_number = 0;
};
