#pragma once

#include "app/base/dates.h"
#include "print/consent_form/form_columns.h"
#include "print/documents/addressee.h"

#include <array>

/// How the columns of the consent form get their values. Each function or template is one kind of column; a
/// treatment column is empty when the treatment content is not printed, a doctor's when the doctor's block is
/// not.
namespace form_values {

using X = const FormSource &;

/// @name Words
///@{
/// "25年3月10日", for a date whose era has a column of its own.
QString shortDate(const QDate &date);
/// "令和8年11月21日"
QString longDate(const QDate &date);
QString period(const QDate &start, const QDate &end);
bool doctorShown(X x);
///@}

/// What stands under 病名 of an acupuncture form: the numbers to be ringed and the words of the seventh.
struct Diseases {
    std::array<bool, 7> marked{};
    QString other;
};
Diseases diseases(X x);

template <F f> QString textOf(X x) {
    return x.rows.text(x.record, f);
}

template <F f> DataValue text(X x) {
    return textOf<f>(x);
}
template <F f> DataValue number(X x) {
    return x.rows.number(x.record, f);
}
/// A number that is not there is an empty text.
template <F f> DataValue numberOrEmpty(X x) {
    return x.rows.number(x.record, f) == 0 ? DataValue(QString()) : DataValue(x.rows.number(x.record, f));
}
template <F f> DataValue flag(X x) {
    return qint64(x.rows.flag(x.record, f));
}
template <F f> DataValue treatmentFlag(X x) {
    return qint64(x.choice.treatment && x.rows.flag(x.record, f));
}
/// Counted from 1.
template <size_t number> DataValue disease(X x) {
    return qint64(diseases(x).marked[number - 1]);
}
template <F f> DataValue dayOfEra(X x) {
    return shortDate(x.rows.date(x.record, f));
}
template <F f> DataValue day(X x) {
    return longDate(x.rows.date(x.record, f));
}
template <F f> DataValue era(X x) {
    return formatDate(x.rows.date(x.record, f), u"g");
}
template <F first, F second> QString addressOf(X x) {
    return joinedLines(textOf<first>(x), textOf<second>(x));
}
template <F first, F second> DataValue address(X x) {
    return addressOf<first, second>(x);
}
template <F start, F end> DataValue periodOf(X x) {
    return period(x.rows.date(x.record, start), x.rows.date(x.record, end));
}
/// Of the company that owns the branch, or of the branch where no company is kept for it.
template <QString cD_CORP::*member, F f> DataValue practice(X x) {
    return x.practice ? x.practice->*member : textOf<f>(x);
}
template <QString cD_CORP::*member> DataValue sender(X x) {
    return x.sender ? x.sender->*member : QString();
}

/// @name Columns with a rule of their own
///@{
DataValue paralysis(X x);
DataValue contracture(X x);
DataValue contractureOther(X x);
DataValue muscles(X x);
DataValue kind(X x);
DataValue diagnosis(X x);
DataValue onset(X x);
DataValue onsetKnown(X x);
DataValue remark(X x);
DataValue comment(X x);
DataValue hospital(X x);
DataValue hospitalAddress(X x);
DataValue doctor(X x);
DataValue doctorTelephone(X x);
DataValue hospitalNumber(X x);
DataValue diseaseCode(X x);
DataValue diseaseNames(X x);
DataValue practiceName(X x);
DataValue practiceAddress(X x);
DataValue place(X x);
DataValue visits(X x);
DataValue symptom(X x);
DataValue hasSymptom(X x);
DataValue reacquisition(X x);
DataValue senderName(X x);
DataValue senderAddress(X x);
DataValue sex(X x);
DataValue careDegree(X x);
///@}

} // namespace form_values
