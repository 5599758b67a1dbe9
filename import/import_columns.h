#pragma once

#include "import/csv_file.h"
#include "import/import_kind.h"

/// Which column of a file holds which item.
struct ImportColumns {
    bool headed = false;     ///< the first row holds headings
    std::vector<int> fields; ///< of each column of the file: position in the description, −1 for none
    QStringList firstRow;    ///< of the file

    /// As they stand; without any 列1, 列2 …
    QString heading(int column) const;
    int columnOf(int field) const;
    /// A field is in one column at most: what had it before has none.
    void assign(int column, int field);
    /// Position of the reasons that an import wrote; −1 when there are none.
    int reasonColumn(const ImportDescription &description) const;
};

/// Recognises the columns by the first row of the file, in the ways in which people write headings. Of two
/// columns for one item the first is taken. A first row without any known heading is data.
ImportColumns recogniseColumns(const ImportDescription &description, const CsvFile &file);

/// What is missing of the columns, a sentence; empty when rows can be read by them.
QString whyColumnsFail(const ImportDescription &description, const ImportColumns &columns);
