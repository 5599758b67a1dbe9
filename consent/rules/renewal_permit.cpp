#include "consent/rules/renewal_permit.h"

#include "app/base/dates.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int lastDayOfMonth = -1;
constexpr int defaultDay = 11;

// A month that is too short for the day permits nothing; the month after it does.
QDate firstDay(const QDate &month, int day) {
    if (day == lastDayOfMonth)
        return {month.year(), month.month(), month.daysInMonth()};
    return day <= month.daysInMonth() ? QDate(month.year(), month.month(), day) : month.addMonths(1);
}

QString refusalText(int day, const QDate &first) {
    const QString dayText = day == lastDayOfMonth ? u"月末"_s : u"%1日"_s.arg(day);
    const QString refusal =
        u"選択された同意書の更新を行うことはできません。\r\n更新基準日(%1)を過ぎてから更新可能となります。"_s
            .arg(dayText);
    return first.isValid()
               ? refusal + u"\r\n\r\n表示している対象期間の同意は、%1（%2）から更新できます。"_s.arg(
                               dateText(first), weekdayText(first))
               : refusal;
}

} // namespace

RenewalPermit renewalPermit(const QDate &today, const QDate &rangeStart, int referenceDay) {
    const int day = referenceDay == lastDayOfMonth || referenceDay > 0 ? referenceDay : defaultDay;
    const QDate first = firstDay(QDate(rangeStart.year(), rangeStart.month(), 1).addMonths(1), day);
    if (first.isValid() && today >= first)
        return {true, {}};
    return {false, refusalText(day, first)};
}
