#pragma once

#include "viewer/document/document.h"
#include "viewer/problem.h"

#include <optional>

/// A finished document: layouts, data and pictures of all its reports in one file.

bool isDocumentFile(const QByteArray &bytes);
std::optional<Document> readDocumentFile(const QString &path, Problem *problem);
/// Whole, then moved into place. Layouts that several reports share are stored once.
bool writeDocumentFile(const Document &document, const QString &path, Problem *problem);
