#pragma once

#include "app/base/result.h"

#include <QByteArray>
#include <QStringList>

struct GridTable;

enum class CsvEncoding { CodePage932, Utf8 };

/// How a grid's file is written.
struct CsvFormat {
    char16_t delimiter = u',';
    bool quoted = true;
    bool headings = true;
    CsvEncoding encoding = CsvEncoding::CodePage932;
};

/// Writes a grid as a file that spread-sheets and other programs read.
namespace modMakeCsv {

/// The file's bytes: a line for each row, ending in CR LF; UTF-8 with a byte order mark. CR LF pairs, lone
/// CRs and NULs are taken out of the cells. Quotes inside quotes are doubled; without quoting, a cell that
/// could not be read back is quoted all the same, and so is a first one that begins with "ID", which
/// spread-sheets take for a file of another kind.
QByteArray bytes(const GridTable &table, const CsvFormat &format);

/// Writes the file whole: an existing one stays until the new one lies on the disk.
Result<> write(const QString &path, const GridTable &table, const CsvFormat &format);

/// @name What the user should know before the file is written, a line for each cell, "3 行目 備考「𠮷田」"
///@{
/// Characters that code page 932 lacks, with what is written instead.
QStringList lostCharacters(const GridTable &table, bool headings);
/// Cells that a spread-sheet computes instead of showing them: =A1, +81-3-1234. They are written as they are.
QStringList formulas(const GridTable &table);
///@}

} // namespace modMakeCsv
