#include "db/tables/patient_text.h"

using namespace Qt::Literals::StringLiterals;

QString treatmentText(TreatmentKind kind, bool deformity) {
    if (deformity)
        return u"変形徒手"_s;
    return kind == TreatmentKind::Acupuncture ? u"鍼灸"_s : u"マッサ"_s;
}

QString patientText(qint64 number, const QString &name) {
    return QString::number(number) + u' ' + name;
}
