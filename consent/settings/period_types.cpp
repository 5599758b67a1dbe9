#include "consent/settings/period_types.h"

#include "db/tables/patient_text.h"

#include <QHash>

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

QStringList PeriodTypeTable::takeOver(const PeriodTypeTable &later) {
    QHash<qint32, const PatientTypes *> edited;
    for (const PatientTypes &patient : patients)
        if (patient.isChanged() || patient.ticked)
            edited.insert(patient.nIDNo, &patient);
    PeriodTypeTable table = later;
    for (PatientTypes &patient : table.patients)
        if (const PatientTypes *before = edited.value(patient.nIDNo)) {
            patient.ticked = before->ticked;
            if (before->read == patient.read || !before->isChanged()) {
                patient.now = before->isChanged() ? before->now : patient.read;
                edited.remove(patient.nIDNo);
            }
        }
    QStringList dropped;
    for (const PatientTypes &patient : patients)
        if (edited.contains(patient.nIDNo) && patient.isChanged())
            dropped.append(patientText(patient.nIDNo, patient.cName));
    *this = std::move(table);
    return dropped;
}
