#pragma once

#include "viewer/finished/document_file.h"

/// What stands inside a finished document, without the guard around it.

QByteArray documentContent(const FinishedDocument &document);
/// @param name of the file, for messages
std::optional<FinishedDocument> readDocumentContent(const QByteArray &content, const QString &name,
                                                    Problem *problem);
