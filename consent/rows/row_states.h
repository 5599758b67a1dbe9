#pragma once

#include "consent/rows/list_cells.h"

/// What a row of the list waits for; a tab each over the list. A row may be in several.
enum class RowState { All, Lapsed, DueSoon, NotRequested, Waiting, Received, NotContacted, Count };

struct RowStateInfo {
    QString caption;
    QString hint; ///< which rows are in it
};
const RowStateInfo &rowState(RowState state);

/// The states of one row, a bit each.
using RowStates = quint8;
constexpr bool isIn(RowStates states, RowState state) {
    return (states >> int(state) & 1) != 0;
}

/// @param inRange the period ends in the range that the list was read for; a row outside of it is in no other
/// state than 期限切れ
RowStates statesOf(const RowMarks &marks, Urgency urgency, bool inRange);
