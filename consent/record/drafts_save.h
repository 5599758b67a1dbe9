#pragma once

#include "consent/record/record_write.h"

#include <set>

/// Reads the consents of some patients of a branch, each patient's oldest first.
Result<std::vector<ConsentDraft>> readConsents(cT_ADODB &db, const Branch &branch,
                                               const std::set<qint32> &patients);

/// A draft, and the row that it takes the place of.
struct DraftSave {
    ConsentDraft draft;
    std::optional<ConsentDraft> stored;
};

/// Registers drafts, in the order of their keys, with the newest marks of their patients. The rows were read
/// and found free under the lock of `write`.
Result<> registerDrafts(RecordWrite &write, std::span<const DraftSave *const> drafts);
