#include "consent/rules/period.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr short nextMonthType = 2;
constexpr short secondConsentType = 2;
constexpr int defaultMonths = 6;

QDate firstOfMonth(const QDate &date, int monthsLater = 0) {
    return QDate(date.year(), date.month(), 1).addMonths(monthsLater);
}

QDate midMonthEnd(const QDate &consentDate, int months) {
    const int last = consentDate.day() > 15 ? months : months - 1;
    return firstOfMonth(consentDate, last + 1).addDays(-1);
}

void skipDaysOff(PeriodReckoning &reckoning, QDate &start, const Holidays &holidays) {
    for (;; start = start.addDays(1)) {
        if (start.dayOfWeek() == Qt::Sunday)
            ++reckoning.sundays;
        else if (holidays.contains(start))
            ++reckoning.holidays;
        else
            return;
    }
}

// The rule proper: from the day on which the period may start at the earliest.
void place(PeriodReckoning &reckoning, const QDate &earliest, const Holidays *holidays) {
    const PeriodRule &rule = reckoning.rule;
    reckoning.placed = earliest;
    if (rule.placement == Placement::NextMonth) {
        reckoning.moved = earliest.day() != 1;
        if (reckoning.moved)
            reckoning.placed = firstOfMonth(earliest, 1);
        reckoning.end = reckoning.placed.addMonths(rule.months).addDays(-1);
    } else {
        reckoning.end = midMonthEnd(reckoning.consentDate, rule.months);
    }

    QDate start = reckoning.placed;
    if (holidays)
        skipDaysOff(reckoning, start, *holidays);
    if (start <= reckoning.end)
        reckoning.period = {start, reckoning.end};
}

PeriodReckoning begin(const QDate &consentDate, const PeriodRule &rule) {
    PeriodReckoning reckoning;
    reckoning.consentDate = consentDate;
    reckoning.rule = rule;
    reckoning.rule.months = legalMonths(rule.months, consentDate);
    reckoning.lengthened = reckoning.rule.months != rule.months;
    return reckoning;
}

} // namespace

PeriodRule periodRule(const PeriodSettings &settings) {
    PeriodRule rule;
    rule.secondConsent = settings.iDoui1CalcType == secondConsentType;
    rule.months = rule.secondConsent ? settings.iDouiKikan2 : settings.iDouiKikan1;
    if (rule.months <= 0)
        rule.months = defaultMonths;
    if (settings.iKikanCalcType == nextMonthType)
        rule.placement = Placement::NextMonth;
    return rule;
}

PeriodRule deformityRule(const PeriodSettings &settings, int nDouiUpMonth) {
    PeriodRule rule = periodRule(settings);
    if (nDouiUpMonth > 0)
        rule.months = nDouiUpMonth;
    return rule;
}

int legalMonths(int months, const QDate &consentDate) {
    return months == 3 && consentDate > QDate(2018, 9, 30) ? 6 : months;
}

PeriodReckoning reckonFirst(const QDate &consentDate, const PeriodRule &rule) {
    PeriodReckoning reckoning = begin(consentDate, rule);
    if (consentDate.isValid())
        place(reckoning, consentDate, nullptr);
    return reckoning;
}

PeriodReckoning reckonNext(const QDate &consentDate, const QDate &previousEnd, const PeriodRule &rule,
                           const Holidays *holidays) {
    PeriodReckoning reckoning = begin(consentDate, rule);
    reckoning.previousEnd = previousEnd;
    if (!consentDate.isValid())
        return reckoning;
    const QDate follows = previousEnd.isValid() ? previousEnd.addDays(1) : consentDate;
    place(reckoning, std::max(follows, consentDate), holidays);
    return reckoning;
}

PeriodReckoning reckonStored(const QDate &consentDate, const Period &stored, const PeriodRule &rule,
                             const Holidays *holidays) {
    if (!consentDate.isValid() || !stored.start.isValid() || stored.start <= consentDate)
        return reckonFirst(consentDate, rule);
    if (rule.placement == Placement::NextMonth) {
        // The start may have come from the first by the skipping of days off.
        const PeriodReckoning fromFirst =
            reckonNext(consentDate, firstOfMonth(stored.start).addDays(-1), rule, holidays);
        if (fromFirst.period.start == stored.start)
            return fromFirst;
    }
    return reckonNext(consentDate, stored.start.addDays(-1), rule, holidays);
}

QString periodStateText(const Period &period, const QDate &day) {
    const bool known = period.start.isValid() || period.end.isValid();
    if (!known || (period.start.isValid() && period.end.isValid() && period.end < period.start))
        return {};
    if (period.start.isValid() && day < period.start)
        return u"要加療開始"_s;
    return period.end.isValid() && day > period.end ? u"要加療終了"_s : u"要加療途中"_s;
}
