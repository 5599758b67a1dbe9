#pragma once

#include "db/tables/keys.h"

#include <QDate>
#include <QString>
#include <vector>

/// What a list row says of its running consent, for reckoning the next one.
struct RunningConsent {
    PatientKey patient;
    bool deformity = false; ///< 変形徒手
    int months = 0;         ///< with which the row's period was reckoned; 0 when not recorded
    QDate consentDay;
    Period period;
};

/// Reckons and explains periods for the list. The list's model asks it; a test may put its own in place.
class PeriodAdvisor {
public:
    virtual ~PeriodAdvisor() = default;

    /// The re-consent date to propose for a row that was received without one; invalid for none.
    virtual QDate reconsentDay(const RunningConsent &running) = 0;
    /// Whether a massage row's re-consent date goes for the patient's deformity-correction row too.
    virtual bool followsMassage() const = 0;
    /// The period after the running one for a re-consent on the given day; empty where the rule gives none or
    /// trouble() says why it could not be reckoned.
    virtual Period nextPeriod(const RunningConsent &running, const QDate &reconsent) = 0;
    /// How the next period comes about, and whether the given one differs from the rule.
    virtual QString explainNext(const RunningConsent &running, const QDate &reconsent,
                                const Period &next) = 0;
    /// How the running period came about, and whether it differs from the rule.
    virtual QString explainRunning(const RunningConsent &running) = 0;

    /// What the next calls need for these patients may be looked up at once.
    virtual void prepare(const std::vector<PatientKey> &patients) = 0;
    /// Why the last call could not look up what the rule needs; empty when it could.
    virtual QString trouble() const = 0;
    /// Whether the last call could not look up what the rule needs, even where trouble() has been told
    /// before.
    virtual bool failed() const = 0;
    /// What was looked up may have changed: it is looked up anew.
    virtual void forget() = 0;
};
