#include "consent/rules/list_advisor.h"

#include "consent/rules/holidays_query.h"
#include "consent/rules/period_settings_query.h"
#include "consent/rules/period_text.h"
#include "db/adodb.h"

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

void ListAdvisor::troubled(const ErrorsSince &errors) {
    m_trouble = u"期間の設定を読み込めないため、要加療期間を計算できません。"_s + errors.text();
}

const Holidays *ListAdvisor::holidays() {
    if (!m_holidays) {
        const ErrorsSince errors(m_db);
        Holidays read;
        if (readHolidays(m_db, m_branch, read) != 0) {
            troubled(errors);
            return nullptr;
        }
        m_holidays = std::move(read);
    }
    return &*m_holidays;
}

const PeriodSettings *ListAdvisor::settings(const PatientKey &patient) {
    auto known = m_settings.find(patient.nIDNo);
    if (known == m_settings.end()) {
        const ErrorsSince errors(m_db);
        PeriodSettings read;
        if (readPeriodSettings(m_db, patient, read) != 0) {
            troubled(errors);
            return nullptr;
        }
        known = m_settings.insert(patient.nIDNo, read);
    }
    return &*known;
}

std::optional<ListAdvisor::Basis> ListAdvisor::basis(const RunningConsent &running) {
    m_trouble.clear();
    if (!links.unread.isEmpty()) // told when they were read
        return std::nullopt;
    const PeriodSettings *stored = settings(running.patient);
    const Holidays *daysOff = stored && links.holidays ? holidays() : nullptr;
    if (!m_trouble.isEmpty())
        return std::nullopt;
    return Basis{running.deformity ? deformityRule(*stored, running.months) : periodRule(*stored), daysOff};
}

QDate ListAdvisor::reconsentDay(const RunningConsent &running) {
    m_trouble.clear();
    if (!links.previousDay || !running.consentDay.isValid())
        return {};
    const std::optional<Basis> by = basis(running);
    return by ? running.consentDay.addMonths(legalMonths(by->rule.months, running.consentDay)) : QDate();
}

Period ListAdvisor::nextPeriod(const RunningConsent &running, const QDate &reconsent) {
    const std::optional<Basis> by = basis(running);
    return by ? reckonNext(reconsent, running.period.end, by->rule, by->holidays).period : Period();
}

QString ListAdvisor::explainNext(const RunningConsent &running, const QDate &reconsent, const Period &next) {
    const std::optional<Basis> by = basis(running);
    if (!by)
        return m_trouble + links.unread;
    const PeriodReckoning reckoning = reckonNext(reconsent, running.period.end, by->rule, by->holidays);
    return lines(explainPeriod(reckoning, ConsentName::ReConsent), periodDifference(next, reckoning));
}

QString ListAdvisor::explainRunning(const RunningConsent &running) {
    const std::optional<Basis> by = basis(running);
    if (!by)
        return m_trouble + links.unread;
    const PeriodReckoning reckoning =
        reckonStored(running.consentDay, running.period, by->rule, by->holidays);
    return lines(explainPeriod(reckoning, ConsentName::Consent), periodDifference(running.period, reckoning));
}
