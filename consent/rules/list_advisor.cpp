#include "consent/rules/list_advisor.h"

#include "app/base/settings.h"
#include "consent/rules/period_text.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

QString lines(const QString &first, const QString &second) {
    return second.isEmpty() ? first : first + u"\n"_s + second;
}

} // namespace

LinkOptions keptLinks(const Folders &folders) {
    const Settings settings(folders);
    return {settings.isOn(Setting::変形連動), settings.isOn(Setting::祝日考慮),
            settings.isOn(Setting::前回取得日連動), settings.readable(Setting::祝日考慮).reason()};
}

void ListAdvisor::troubled(const QString &reason) {
    m_trouble = u"期間の設定を読み込めないため、要加療期間を計算できません。"_s + reason;
}

void ListAdvisor::prepare(const std::vector<PatientKey> &patients) {
    std::vector<qint32> numbers;
    for (const PatientKey &patient : patients)
        numbers.push_back(patient.nIDNo);
    // A failure is met again, and told, by the call that needs what was not read.
    if (const Result<> prepared = m_reader.prepare(std::move(numbers)); !prepared)
        troubled(prepared.reason());
}

std::optional<ListAdvisor::Basis> ListAdvisor::basis(const RunningConsent &running) {
    m_trouble.clear();
    if (!links.unread.isEmpty()) // told when they were read
        return std::nullopt;
    const Result<PeriodBasis> by = m_reader.of(running.patient.nIDNo, links.holidays);
    if (!by) {
        troubled(by.reason());
        return std::nullopt;
    }
    return Basis{running.deformity ? deformityRule(by->settings, running.months) : periodRule(by->settings),
                 by->daysOff};
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
