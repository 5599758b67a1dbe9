#include "consent/entry/entry_period.h"

namespace {

constexpr int deformityMonths = 1;

PeriodRule ruleOf(const PeriodBasis &basis, const ConsentDraft &draft) {
    PeriodRule rule = periodRule(basis.settings);
    if (draft.nDouiUpMonth > 0)
        rule.months = draft.nDouiUpMonth;
    return rule;
}

// The consent that a new one follows: the latest before it that is used for claims.
QDate endBefore(const ConsentDraft &draft, std::span<const ConsentDraft> others) {
    const ConsentDraft *before = nullptr;
    for (const ConsentDraft &other : others) {
        const bool usable = other.iHenkeiFlg == draft.iHenkeiFlg && other.iReceptDisabledFlg != 1;
        if (usable && other.tDouiDay.isValid() && other.tDouiDay < draft.tDouiDay &&
            (!before || other.tDouiDay > before->tDouiDay))
            before = &other;
    }
    return before ? before->tDouiKaryoE : QDate();
}

} // namespace

int ruledMonths(const PeriodBasis &basis, const ConsentDraft &draft) {
    const int own = draft.nDouiUpMonth > 0 ? int(draft.nDouiUpMonth) : deformityMonths;
    const PeriodRule rule =
        isDeformity(draft) ? deformityRule(basis.settings, own) : periodRule(basis.settings);
    return legalMonths(rule.months, draft.tDouiDay);
}

PeriodReckoning reckonDraft(const PeriodBasis &basis, const ConsentDraft &draft,
                            std::span<const ConsentDraft> others) {
    const QDate previousEnd = endBefore(draft, others);
    const PeriodRule rule = ruleOf(basis, draft);
    if (!previousEnd.isValid())
        return reckonFirst(draft.tDouiDay, rule);
    return reckonNext(draft.tDouiDay, previousEnd, rule, basis.daysOff);
}

QDate endFromStart(const PeriodBasis &basis, const ConsentDraft &draft) {
    const QDate &start = draft.tDouiKaryoS;
    return start.isValid() ? reckonFirst({start.year(), start.month(), 1}, ruleOf(basis, draft)).end
                           : QDate();
}
