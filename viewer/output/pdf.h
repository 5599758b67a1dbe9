#pragma once

#include "app/base/result.h"

#include <functional>

class Document;

enum class PdfEnd { Written, GivenUp };

/// Writes a document as PDF with its fonts embedded and its text searchable; whole, then moved into place.
/// Whether it was written or given up, or a sentence for the user that names the file.
/// @param goOn called after each page with pages done and all; false gives up
Result<PdfEnd> writePdf(const Document &document, const QString &path,
                        const std::function<bool(int, int)> &goOn = {});
