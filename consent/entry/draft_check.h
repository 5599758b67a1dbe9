#pragma once

#include "consent/record/draft.h"

#include <optional>
#include <span>

/// Why a draft cannot be registered.
struct DraftProblem {
    QString text;
    QStringView column; ///< where to mend it
};

/// The checks before registering, in their order, texts that their columns cannot hold last; the first that
/// fails, nothing when all pass.
///
/// Acupuncture asks for a treatment and a disease, massage for treatment content, a diagnosis and a body
/// part, deformity correction for a diagnosis and a limb: the correction is its content.
/// @param target key under which the draft will be stored
/// @param others keys of the patient's other rows
std::optional<DraftProblem> checkDraft(const ConsentDraft &draft, bool acupuncture,
                                       const ConsentRowKey &target, std::span<const ConsentRowKey> others);
