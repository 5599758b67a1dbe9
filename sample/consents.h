#pragma once

#include "db/tables/keys.h"
#include "sample/random.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

namespace sample {

/// Where a patient's newest consent stands on the day of the sample.
enum class Course {
    Running,   ///< ends in the coming months
    Due,       ///< ends this month or next, nothing done yet
    Requested, ///< ends this month or next, the doctor has been asked
    Received,  ///< the answer is entered and ready to be renewed
    Lapsed,    ///< ended in the last months and was not renewed
    Ended,     ///< the patient has left
    New,       ///< first consent
};

/// What one consent covers, the same in all consents of a patient.
struct TreatmentContent {
    bool acupuncture = false;
    int parts = 0;        ///< bits 0 to 4: trunk, right and left arm, right and left leg
    int paralysis = 0;    ///< the same bits
    int contractures = 0; ///< bits 0 to 5 right shoulder to ankle, 6 to 11 left
    int diseases = 0;     ///< acupuncture diseases, bits 0 to 6
    bool warmth = false;  ///< warm compress, or moxibustion for acupuncture
    bool electric = false;
    QString diagnosis;
    QString otherSymptom; ///< null: none
};

/// A row of RIYOUSHA_DOUI_REC.
struct Consent {
    QDate day; ///< date of the consent and, as a number, key of the row
    QDate examined;
    Period period;
    bool deformity = false;
    bool newest = false;
    bool oral = false;
    std::optional<int> disabled = 0; ///< not for claims
    QDate againDay;                  ///< re-consent
    Period again;
    bool requested = false;
    bool toHospital = false; ///< the request went to the hospital, not to the doctor
    bool received = false;
    bool contact = false;
    bool sent = false;
    std::optional<int> method; ///< index into the request methods
    QString ownMethods;        ///< null: none
    QString remark;            ///< null: none
    Period correction;         ///< of the deformity correction, on the newest massage row
    QDateTime updated;         ///< invalid on rows of older versions of the suite
};

/// End of a period by the mid-month rule, reckoned here anew so that the program's own rule meets data that
/// it has not made.
QDate periodEnd(QDate consentDay, int months);

/// Some time of that day in office hours. UTC, so that it reads the same whatever the machine's zone.
QDateTime officeTime(Random &random, QDate day);

/// Consents of one patient on the given day, in order: every six months back for three years at most, the
/// newest one as the course says, and the monthly ones of a deformity correction.
QList<Consent> makeConsents(Random &random, Course course, bool deformity, QDate day);

} // namespace sample
