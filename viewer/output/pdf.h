#pragma once

#include <QString>
#include <functional>

class Document;

/// Writes a document as PDF with its fonts embedded and its text searchable; whole, then moved into place.
/// @param goOn called after each page with pages done and all; false gives up (`reason` stays empty)
/// @param reason a sentence for the user that names the file
bool writePdf(const Document &document, const QString &path, const std::function<bool(int, int)> &goOn,
              QString *reason);
