#include "consent/list/list_advisor.h"

#include "consent/rules/holidays_query.h"
#include "consent/rules/period_settings_query.h"
#include "consent/rules/period_text.h"

#include <QStringList>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString lines(const QString &first, const QString &second) {
    return second.isEmpty() ? first : first + u"\n"_s + second;
}

} // namespace

void ListAdvisor::forget() {
    m_holidays.reset();
    m_settings.clear();
}

const Holidays *ListAdvisor::holidays() {
    if (!links.holidays)
        return nullptr;
    if (!m_holidays) {
        Holidays read;
        readHolidays(m_db, m_branch, read);
        m_holidays = std::move(read);
    }
    return &*m_holidays;
}

PeriodRule ListAdvisor::rule(const RunningConsent &running) {
    auto settings = m_settings.find(running.patient.nIDNo);
    if (settings == m_settings.end()) {
        PeriodSettings read;
        readPeriodSettings(m_db, running.patient, read);
        settings = m_settings.insert(running.patient.nIDNo, read);
    }
    return running.deformity ? deformityRule(*settings, running.months) : periodRule(*settings);
}

PeriodReckoning ListAdvisor::reckon(const RunningConsent &running, const QDate &reconsent) {
    return reckonNext(reconsent, running.period.end, rule(running), holidays());
}

QDate ListAdvisor::reconsentDay(const RunningConsent &running) {
    if (!links.previousDay || !running.consentDay.isValid())
        return {};
    return running.consentDay.addMonths(legalMonths(rule(running).months, running.consentDay));
}

Period ListAdvisor::nextPeriod(const RunningConsent &running, const QDate &reconsent) {
    return reckon(running, reconsent).period;
}

QString ListAdvisor::explainNext(const RunningConsent &running, const QDate &reconsent, const Period &next) {
    const PeriodReckoning reckoning = reckon(running, reconsent);
    return lines(explainPeriod(reckoning, ConsentName::ReConsent), periodDifference(next, reckoning));
}

QString ListAdvisor::explainRunning(const RunningConsent &running) {
    const PeriodReckoning reckoning =
        reckonStored(running.consentDay, running.period, rule(running), holidays());
    return lines(explainPeriod(reckoning, ConsentName::Consent), periodDifference(running.period, reckoning));
}
