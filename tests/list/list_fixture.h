#pragma once

#include "app/base/folders.h"
#include "consent/list/list.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

/// Proposes a period that can be told from any real one: from the day after the re-consent for ten days.
class TenDayAdvisor : public PeriodAdvisor {
public:
    QDate reconsentDay(const RunningConsent &running) override {
        m_asked = running.patient.nIDNo;
        return failed() ? QDate() : proposedDay;
    }
    bool followsMassage() const override { return follows; }
    Period nextPeriod(const RunningConsent &running, const QDate &reconsent) override {
        m_asked = running.patient.nIDNo;
        if (failed())
            return {};
        return {reconsent.addDays(1), reconsent.addDays(10)};
    }
    QString explainNext(const RunningConsent &, const QDate &, const Period &) override {
        return QStringLiteral("next");
    }
    QString explainRunning(const RunningConsent &) override { return QStringLiteral("running"); }

    QString trouble() const override { return failed() ? said : QString(); }
    bool failed() const override { return !said.isEmpty() && (troubled == 0 || troubled == m_asked); }
    void prepare(const std::vector<PatientKey> &) override {}
    void forget() override {}

    QString said;
    qint32 troubled = 0; ///< the patient whose settings fail; 0: everyone's
    QDate proposedDay;
    bool follows = false;

private:
    qint32 m_asked = 0;
};

/// A practice of a few patients on 2026/11/21, each row made for one case.
class ListTest : public testing::Test, protected TestInstallation {
protected:
    ListTest();

    void patient(int number, const QString &name, const QString &kana, const QString &more = {});
    /// A newest massage consent of doctor 1 unless `set` ("column = value, …") says otherwise.
    void consent(int number, const QString &end, const QString &set = {});
    /// Searches and gives the patient numbers in order, "7h" for a deformity-correction row.
    QStringList found();
    int recordOf(int number, bool deformity = false) const;
    QModelIndex cell(int number, ListColumn column, bool deformity = false) const;
    bool edit(int number, ListColumn column, const QVariant &value, bool deformity = false);
    bool tick(int number, ListColumn column, bool on, bool deformity = false);

    TestDatabase database;
    TenDayAdvisor advisor;
    ConsentListModel model;
    ConsentList list{environment, database.db, model, advisor};
};
