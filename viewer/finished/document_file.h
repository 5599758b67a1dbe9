#pragma once

#include "viewer/document/document.h"
#include "viewer/problem.h"

#include <QStringList>
#include <optional>

/// A finished document: layouts, data and pictures of all its reports in one file, which needs no other file
/// to be shown. Layouts, data and pictures that several reports share are stored once.
struct FinishedDocument {
    Document document;
    QStringList notes; ///< reports that were left out when it was built, and why
};

/// Whether a file with these bytes in front is a finished document.
bool isDocumentFile(QByteArrayView bytes);
/// The length that the file says it has, for one that is still being written; 0 when that cannot be told.
qint64 documentFileLength(QByteArrayView bytes);

/// @param name for messages
/// @param problem filled when the bytes are no finished document, cut off, or changed since they were written
std::optional<FinishedDocument> parseDocumentFile(const QByteArray &bytes, const QString &name,
                                                  Problem *problem);
std::optional<FinishedDocument> readDocumentFile(const QString &path, Problem *problem);

/// What stands in the document's file.
QByteArray documentFileBytes(const FinishedDocument &document);
/// Whole, then moved into place.
bool writeDocumentFile(const FinishedDocument &document, const QString &path, Problem *problem);
