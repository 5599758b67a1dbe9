#pragma once

#include <QString>

/// RIYOUSHA.iSejutsuKubun; All is a choice, never stored with a patient. Settings keep these numbers too.
enum class TreatmentKind { Massage = 0, Acupuncture = 1, All = 2 };

/// "マッサ" or "鍼灸", and "変形徒手" for a deformity-correction row.
QString treatmentText(TreatmentKind kind, bool deformity);

/// "IDNo. name", as messages name a patient.
QString patientText(qint64 number, const QString &name);
