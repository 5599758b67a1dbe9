#pragma once

#include "app/base/result.h"
#include "consent/record/list_row.h"

#include <optional>
#include <vector>

class cT_ADODB;

/// What stands where somebody saw a row.
struct StandingRow {
    std::optional<ReadRow> row; ///< nothing: no row bears the key
    bool newest = false;        ///< it has not been renewed
    QString computer;           ///< that wrote it last; may be empty
};

/// Reads the rows of some keys as they stand now, in the order of the keys.
Result<std::vector<StandingRow>> readStandingRows(cT_ADODB &db, const std::vector<ConsentRowKey> &keys);
