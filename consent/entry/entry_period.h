#pragma once

#include "consent/record/draft.h"
#include "consent/rules/period_basis.h"

#include <span>

/// Months of a draft's period by the patient's rule, the legal cut-over included. A deformity correction runs
/// as long as the draft says, one month where it says nothing.
int ruledMonths(const PeriodBasis &basis, const ConsentDraft &draft);

/// The period that the rule gives for a draft's consent date and months: after the end of the consent before
/// it, never before the consent date.
/// @param others the patient's other rows; those not used for claims have no say
PeriodReckoning reckonDraft(const PeriodBasis &basis, const ConsentDraft &draft,
                            std::span<const ConsentDraft> others);

/// The end of a period whose start was entered by hand: counted from the first day of its month.
QDate endFromStart(const PeriodBasis &basis, const ConsentDraft &draft);
