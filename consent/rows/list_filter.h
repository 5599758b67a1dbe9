#pragma once

#include "db/tables/patient_text.h"

#include <QDate>
#include <QStringList>
#include <vector>

enum class ListView { Newest, History };

/// How the consent is given: on paper or by word of mouth.
enum class Procedure { All, Written, Oral };

/// Stored as these numbers under "一覧並び順".
enum class ListOrder {
    HospitalAndDoctor = 0,
    LaterDoctor = 1,
    HospitalKana = 2,
    Patient = 3,
    EndSoonest = 4
};
/// Stored as these numbers under "利用者並び順".
enum class PatientOrder { Number = 0, Kana = 1 };

/// A choice that limits the list, as documents of it say: "医師" and the doctor's name.
struct FilterName {
    QString caption, name;
};

/// What the consent list shows. A number 0 and an empty text do not limit the list.
struct ListFilter {
    QDate from; ///< the consent's period ends on this day or later
    QDate to;   ///< and on this day or earlier
    ListView view = ListView::Newest;
    TreatmentKind kind = TreatmentKind::All;
    Procedure procedure = Procedure::All;
    QString doctor; ///< code as in DOCTOR.cIDno
    qint32 hospital = 0;
    qint32 facility = 0; ///< where the patient lives
    qint32 staff = 0;
    QString insurer;
    qint32 counsellor = 0;
    qint32 patient = 0;
    std::vector<qint32> staffAmong{}; ///< the patient's practitioner is one of these; empty: any
    bool staffOrder = false;          ///< they come in this order, before the order chosen
    QString requestMethod;            ///< text looked for in the list remark, blanks ignored
    bool ended = false;               ///< patients with an expiry day too
    ListOrder order = ListOrder::HospitalAndDoctor;
    PatientOrder patientOrder = PatientOrder::Number;
    std::vector<FilterName> names{}; ///< of the codes above, where one is chosen

    /// The range that the list starts with: this month and the five after it.
    void setDefaultRange(const QDate &today) {
        from = QDate(today.year(), today.month(), 1);
        to = from.addMonths(6).addDays(-1);
    }
};

/// Why the list cannot be read with this filter, in the user's words; empty when it can.
QString whyRangeIsWrong(const ListFilter &filter);

/// A stored number as an order; numbers that mean nothing give the first one.
ListOrder listOrderOf(int number);
PatientOrder patientOrderOf(int number);

/// The orders as users choose them, by their numbers.
const QStringList &listOrderNames();
const QStringList &patientOrderNames();

/// What limits the list, a text each: "対象期間：2026/11/01～2027/04/30", "マッサージ".
QStringList filterTexts(const ListFilter &filter);
