#pragma once

#include "db/tables/masters/visit_fee_band.h"

/// What is amiss with bands, each a sentence for the user.
struct BandTroubles {
    QStringList wrong; ///< what cannot be saved
    QStringList odd;   ///< gaps and overlaps: months that have no fee for a distance, or two
};

/// Looks at an office's bands in any order. Periods count by whole months, as they do when fees are looked
/// up. A band continues another where it begins at its end or a metre beyond.
BandTroubles troublesOf(const std::vector<cD_往療費区分> &bands);

/// Whether a band counts in a month, given as yyyymm.
bool isInForce(const cD_往療費区分 &band, const QString &month);
