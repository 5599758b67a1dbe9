#pragma once

#include "app/base/result.h"
#include "consent/rows/list_columns.h"

#include <vector>

class Folders;

/// Which columns the list shows, how wide, in which order, and how many of those shown stay at the left.
struct ColumnSettings {
    static constexpr int narrowest = 2, widest = 200; ///< half-width characters

    struct Column {
        ListColumn column;
        bool shown = true;
        int width = 0; ///< in half-width characters

        friend bool operator==(const Column &, const Column &) = default;
    };

    std::vector<Column> columns; ///< each of the list's once, in the order shown
    int frozen = 0;

    /// What holds while the practice has stored nothing: the name stays.
    static ColumnSettings first();
    friend bool operator==(const ColumnSettings &, const ColumnSettings &) = default;
};

/// The practice's settings. Columns that the file does not name are as at first; a file that was never made
/// is no failure.
Result<ColumnSettings> readColumnSettings(const Folders &folders);
Result<> writeColumnSettings(const Folders &folders, const ColumnSettings &settings);
