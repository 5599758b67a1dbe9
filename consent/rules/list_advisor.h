#pragma once

#include "consent/rules/period_advisor.h"
#include "consent/rules/period_basis.h"

#include <optional>

/// The link options of the list's menu.
struct LinkOptions {
    bool deformity = false;   ///< 変形連動
    bool holidays = false;    ///< 祝日考慮
    bool previousDay = false; ///< 前回取得日連動
    QString unread;           ///< why the options could not be read; while it says so nothing is proposed
};

/// The options as the practice keeps them.
LinkOptions keptLinks(const Folders &folders);

/// Periods by the rules, with what the one reader of their basis gives. Where it fails nothing is proposed: a
/// guess could be paid for.
class ListAdvisor : public PeriodAdvisor {
public:
    /// The arguments must outlive the advisor.
    ListAdvisor(const Folders &folders, const Branch &branch, cT_ADODB &db) : m_reader(folders, branch, db) {}

    LinkOptions links;

    void prepare(const std::vector<PatientKey> &patients) override;
    void forget() override { m_reader.forget(); }
    QString trouble() const override { return m_trouble; }
    bool failed() const override { return !m_trouble.isEmpty() || !links.unread.isEmpty(); }

    QDate reconsentDay(const RunningConsent &running) override;
    bool followsMassage() const override { return links.deformity; }
    Period nextPeriod(const RunningConsent &running, const QDate &reconsent) override;
    QString explainNext(const RunningConsent &running, const QDate &reconsent, const Period &next) override;
    QString explainRunning(const RunningConsent &running) override;

private:
    /// What the rule needs; nothing, with trouble(), when it cannot be had.
    struct Basis {
        PeriodRule rule;
        const Holidays *holidays; ///< null while they are not to be considered
    };
    std::optional<Basis> basis(const RunningConsent &running);
    void troubled(const QString &reason);

    PeriodBasisReader m_reader;
    QString m_trouble;
};
