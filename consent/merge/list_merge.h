#pragma once

#include "app/base/request_methods.h"
#include "consent/merge/merge.h"
#include "consent/record/grid_save.h"
#include "consent/record/standing_rows.h"

/// A row of the list beside what stands in its place now; taken both ways at first.
MergeRow mergeRow(const TypedRow &typed, const StandingRow &now, const RequestMethods &methods);

/// The values that a row is to hold as it was decided.
/// @param now as it stands
ConsentRowValues mergedValues(const MergeRow &merged, const ConsentRowValues &typed,
                              const ConsentRowValues &now);
