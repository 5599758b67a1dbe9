#pragma once

#include "app/base/file_write.h"

#include <functional>

class Document;

/// How the writing or printing of pages came to its end.
enum class PagesEnd { All, GivenUp };

/// Writes a document as PDF with its fonts embedded and its text searchable; whole, then moved into place.
/// Whether it was written or given up, or a sentence for the user that names the file.
/// @param use whether the place was chosen by the user, who may want to share the file
/// @param goOn called after each page with pages done and all; false gives up
Result<PagesEnd> writePdf(const Document &document, const QString &path, FileUse use = FileUse::Private,
                          const std::function<bool(int, int)> &goOn = {});
