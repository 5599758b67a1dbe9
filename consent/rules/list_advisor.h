#pragma once

#include "app/base/branch.h"
#include "consent/rules/period.h"
#include "consent/rules/period_advisor.h"

#include <QHash>
#include <optional>

class ErrorsSince;
class cT_ADODB;

/// The link options of the list's menu.
struct LinkOptions {
    bool deformity = false;   ///< 変形連動
    bool holidays = false;    ///< 祝日考慮
    bool previousDay = false; ///< 前回取得日連動
    QString unread;           ///< why the options could not be read; while it says so nothing is proposed
};

/// Periods by the rules, with the patients' settings and the branch's holidays from the database. What was
/// read is kept until forget(). Where the database fails nothing is proposed: a guess could be paid for.
class ListAdvisor : public PeriodAdvisor {
public:
    ListAdvisor(const Branch &branch, cT_ADODB &db) : m_branch(branch), m_db(db) {}

    LinkOptions links;

    void forget() override;
    QString trouble() const override { return m_trouble; }

    QDate reconsentDay(const RunningConsent &running) override;
    bool followsMassage() const override { return links.deformity; }
    Period nextPeriod(const RunningConsent &running, const QDate &reconsent) override;
    QString explainNext(const RunningConsent &running, const QDate &reconsent, const Period &next) override;
    QString explainRunning(const RunningConsent &running) override;

private:
    /// What the rule needs of the database; nothing, with trouble(), when it cannot be had.
    struct Basis {
        PeriodRule rule;
        const Holidays *holidays; ///< null while they are not to be considered
    };
    std::optional<Basis> basis(const RunningConsent &running);
    const Holidays *holidays();
    const PeriodSettings *settings(const PatientKey &patient);
    void troubled(const ErrorsSince &errors);

    Branch m_branch;
    cT_ADODB &m_db;
    QString m_trouble;
    std::optional<Holidays> m_holidays;
    QHash<qint32, PeriodSettings> m_settings; ///< by patient number
};
