#pragma once

#include "db/tables/keys.h"

#include <QDate>
#include <QString>
#include <algorithm>
#include <utility>
#include <vector>

/// The days off of a branch.
class Holidays {
public:
    Holidays() = default;
    /// @param days in any order; invalid dates are left out
    explicit Holidays(std::vector<QDate> days) : m_days(std::move(days)) {
        std::erase_if(m_days, [](const QDate &day) { return !day.isValid(); });
        std::sort(m_days.begin(), m_days.end());
    }

    bool contains(const QDate &day) const { return std::binary_search(m_days.begin(), m_days.end(), day); }
    bool isEmpty() const { return m_days.empty(); }

private:
    std::vector<QDate> m_days; ///< sorted
};

/// A patient's stored settings for reckoning consent periods, named as their columns; 0 where nothing is
/// stored.
struct PeriodSettings {
    short iDouiKikan1 = 0; ///< months of the first consent
    short iDouiKikan2 = 0; ///< months of the second consent
    short iDoui1CalcType = 0;
    short iKikanCalcType = 0;
};

/// Where a period lies: by the middle of the month of the consent date, or in whole months from the first
/// of a month.
enum class Placement { MidMonth, NextMonth };

/// How long a period is and where it lies.
struct PeriodRule {
    int months = 6;
    Placement placement = Placement::MidMonth;
    bool secondConsent = false; ///< the months are those of the second consent
};

/// The rule that a patient's settings ask for. Months that are absent, 0 or less mean 6; no type and unknown
/// types mean the mid-month rule.
PeriodRule periodRule(const PeriodSettings &settings);

/// The rule of a deformity-correction row: the months that the row itself records, where it does, go before
/// the patient's, which are those of massage.
/// @param nDouiUpMonth months with which the row's period was reckoned, 0 when not recorded
PeriodRule deformityRule(const PeriodSettings &settings, int nDouiUpMonth);

/// Since October 2018 the law gives six months where it gave three.
int legalMonths(int months, const QDate &consentDate);

/// A period and the steps by which it came about.
struct PeriodReckoning {
    QDate consentDate;
    QDate previousEnd;       ///< of the running period; invalid: a first consent, or not known
    PeriodRule rule;         ///< months after the legal cut-over
    bool lengthened = false; ///< the cut-over made six months of three
    bool moved = false;      ///< the start was moved to the first of the next month
    QDate placed;            ///< the start before days off were skipped
    int sundays = 0;         ///< skipped
    int holidays = 0;        ///< skipped, Sundays not counted again
    /// Both ends invalid when the rule gives no period: no consent date, or an end before the start.
    Period period;
    QDate end; ///< that the rule gives, also when it lies before the start
};

/// Period of a first consent.
PeriodReckoning reckonFirst(const QDate &consentDate, const PeriodRule &rule);

/// Period proposed after a running one: starts on the day after it, but never before the consent that
/// allows it.
/// @param holidays days off to be skipped at the start, Sundays as well; null: none are skipped
PeriodReckoning reckonNext(const QDate &consentDate, const QDate &previousEnd, const PeriodRule &rule,
                           const Holidays *holidays);

/// What the rule says of a stored period whose predecessor is not at hand: one that starts after its
/// consent date is taken to follow another without a gap.
PeriodReckoning reckonStored(const QDate &consentDate, const Period &stored, const PeriodRule &rule,
                             const Holidays *holidays);

/// What a period is on a day: 要加療開始 before it starts, 要加療途中 while it runs, 要加療終了 after its
/// end. Without a start it has begun, without an end it runs on; empty without both and where they are the
/// wrong way round.
QString periodStateText(const Period &period, const QDate &day);
