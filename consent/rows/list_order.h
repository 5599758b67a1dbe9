#pragma once

#include "consent/rows/list_cells.h"

#include <functional>
#include <vector>

/// Puts records into the order of a column; equal cells keep the order that they came in.
/// @param valuesOf a record's values as they are shown
/// @param isTarget whether a record is ticked 対象
void orderRecords(std::vector<int> &shown, ListColumn column, bool descending, const ListRecords &records,
                  const ListContext &context, const std::function<ConsentRowValues(int)> &valuesOf,
                  const std::function<bool(int)> &isTarget);
