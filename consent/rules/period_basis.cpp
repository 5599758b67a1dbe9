#include "consent/rules/period_basis.h"

#include "app/base/settings.h"
#include "consent/rules/rules_query.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

void fillCalculationTypes(PeriodSettings &settings, const QString &defaults) {
    const QStringList types = defaults.split(u',');
    if (settings.iDoui1CalcType == 0)
        settings.iDoui1CalcType = types.value(0).trimmed().toShort();
    if (settings.iKikanCalcType == 0)
        settings.iKikanCalcType = types.value(2).trimmed().toShort();
}

void PeriodBasisReader::forget() {
    m_defaults.reset();
    m_daysOff.reset();
    m_settings.clear();
}

Result<QString> PeriodBasisReader::defaults() {
    if (!m_defaults) {
        const Settings settings(m_folders);
        if (const Result<> readable = settings.readable(Setting::同意書自動計算デフォルト); !readable)
            return Failure{readable.reason()};
        m_defaults = settings.text(Setting::同意書自動計算デフォルト);
    }
    return *m_defaults;
}

Result<const Holidays *> PeriodBasisReader::daysOff() {
    if (!m_daysOff) {
        Result<Holidays> read = readHolidays(m_db, m_branch);
        if (!read)
            return Failure{read.reason()};
        m_daysOff = std::move(*read);
    }
    return &*m_daysOff;
}

Result<> PeriodBasisReader::prepare(std::vector<qint32> patients) {
    std::erase_if(patients, [&](qint32 patient) { return m_settings.contains(patient); });
    const Result<QHash<qint32, PeriodSettings>> read = readPeriodSettings(m_db, m_branch, patients);
    if (!read)
        return Failure{read.reason()};
    m_settings.insert(*read);
    return {};
}

Result<PeriodBasis> PeriodBasisReader::of(qint32 patient, bool considerDaysOff) {
    if (const Result<> prepared = prepare({patient}); !prepared)
        return Failure{prepared.reason()};
    const Result<QString> types = defaults();
    if (!types)
        return Failure{types.reason()};
    PeriodBasis basis{m_settings.value(patient), nullptr};
    fillCalculationTypes(basis.settings, *types);
    if (!considerDaysOff)
        return basis;
    const Result<const Holidays *> days = daysOff();
    if (!days)
        return Failure{days.reason()};
    basis.daysOff = *days;
    return basis;
}
