#include "consent/settings/period_types.h"

#include <QHash>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

PeriodTypes periodTypesOf(const QString &stored) {
    const QStringList texts = stored.split(u',');
    return {texts.value(0).trimmed(), texts.value(1).trimmed(), texts.value(2).trimmed()};
}

QString storedPeriodTypes(const PeriodTypes &types) {
    return QStringList(types.begin(), types.end()).join(u',');
}

bool PatientTypes::isWrong(size_t type) const {
    const QString &text = now[type];
    return text != u"1" && text != u"2" && !(text.isEmpty() && read[type].isEmpty());
}

void PeriodTypeTable::takeOver(const PeriodTypeTable &later) {
    QHash<qint32, PatientTypes> before;
    for (const PatientTypes &patient : patients)
        before.insert(patient.nIDNo, patient);
    *this = later;
    for (PatientTypes &patient : patients)
        if (const auto found = before.constFind(patient.nIDNo); found != before.constEnd()) {
            patient.ticked = found->ticked;
            if (found->isChanged() && found->read == patient.read)
                patient.now = found->now;
        }
}
