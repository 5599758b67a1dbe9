#pragma once

#include "consent/merge/merge.h"
#include "consent/record/draft.h"

#include <optional>

/// A consent as it was read and as it was typed over, beside what stands there now; taken both ways at first.
/// @param now nothing: it was removed or moved
/// @param columns those that were typed
MergeRow mergeDraft(const QString &who, const ConsentDraft &seen, const ConsentDraft &typed,
                    const std::optional<ConsentDraft> &now, Compared columns);

/// The consent as it stands with what was decided over it.
ConsentDraft mergedDraft(const MergeRow &merged, const ConsentDraft &typed, const ConsentDraft &now);
