#pragma once

#include "viewer/output/pdf.h"

#include <QSizeF>
#include <functional>

class Document;
class QPrinter;

/// A command file's corrections of what a printer does.
struct PrintAdjustment {
    int offsetX = 0, offsetY = 0; ///< tenths of a millimetre
    int zoom = 2;                 ///< 10 and more percent; everything below the actual size
};

/// Sets the sheet that a page of that size (mm) is printed on.
void choosePaper(QPrinter &printer, QSizeF size);

/// Prints the printer's range of pages in actual size. Each page comes on a sheet of its own size, unless the
/// user chose another than the first page's.
/// @param currentPage from 0, for a printer that is to print that one only
/// @param goOn called before each page with pages done and all; false gives up
/// @return a failure names the printer
Result<PagesEnd> printPages(const Document &document, QPrinter &printer, const PrintAdjustment &adjustment,
                            int currentPage, const std::function<bool(int, int)> &goOn);
