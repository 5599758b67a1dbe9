#pragma once

#include <QString>

/// The finished documents of a batch in the work folder, Output0001.wfd and on.
class BatchDocuments {
public:
    /// A document as young as this may still be waiting for its viewer, or for a printer.
    static constexpr int mayBeReadSeconds = 600;

    /// @param folder with its closing separator
    explicit BatchDocuments(const QString &folder) : m_folder(folder) {}

    /// Removes the documents of earlier batches, but for young ones and those that another program holds.
    void removeEarlier();

    /// Full path of the next document. Numbers count from 1, or on from the last of those that were left.
    QString next();

private:
    QString m_folder;
    int m_number = 0;
};
