#pragma once

#include "app/base/request_methods.h"
#include "consent/merge/merge.h"
#include "consent/record/grid_save.h"
#include "consent/record/standing_rows.h"

/// A row of the list beside what stands in its place now; taken both ways at first.
MergeRow mergeRow(const TypedRow &typed, const StandingRow &now, const RequestMethods &methods);

/// The rows as they stand, over them what they are to hold as it was decided; of a row that has gone nothing
/// is typed any more.
/// @param now what stands in the places of `typed`
std::vector<RowEdit> mergedEdits(const std::vector<MergeRow> &merged, const std::vector<TypedRow> &typed,
                                 const std::vector<StandingRow> &now);

/// Reads what stands in the places of rows.
Result<std::vector<StandingRow>> readStandingRows(cT_ADODB &db, const std::vector<TypedRow> &typed);
