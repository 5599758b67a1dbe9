#pragma once

#include "db/tables/patient_text.h"

#include <QDate>
#include <QStringList>
#include <optional>
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

    friend bool operator==(const FilterName &, const FilterName &) = default;
};

/// What the consent list shows. A number 0 and an empty text do not limit the list.
struct ListFilter {
    QDate from; ///< the consent's period ends on this day or later
    QDate to;   ///< and on this day or earlier
    /// Of the newest view, consents whose period has ended before this day come along; invalid: none do.
    QDate lapsedBefore;
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
    void setDefaultRange(const QDate &today) { setMonths(today, 0, 6); }
    /// So many months from one on, counted from this month.
    void setMonths(const QDate &today, int first, int months) {
        from = QDate(today.year(), today.month(), 1).addMonths(first);
        to = from.addMonths(months).addDays(-1);
    }

    friend bool operator==(const ListFilter &, const ListFilter &) = default;
};

/// The ranges that have a key each; kept for the user by these numbers.
enum class QuickRange { ThisMonth = 1, NextMonth, ThreeMonths, ThisAndNext, SinceLastMonth };

struct QuickRangeInfo {
    QuickRange range;
    QString caption;
    QString hint;
    int first, months;            ///< counted from this month
    bool endSoonestFirst = false; ///< the order goes with the range
};
const QuickRangeInfo &quickRangeInfo(QuickRange range);

void setQuickRange(ListFilter &filter, QuickRange range, const QDate &today);
/// Which of them a filter asks for; nothing: another range.
std::optional<QuickRange> quickRangeOf(const ListFilter &filter, const QDate &today);

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
