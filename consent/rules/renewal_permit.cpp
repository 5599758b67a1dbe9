#include "consent/rules/renewal_permit.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int lastDayOfMonth = -1;
constexpr int defaultDay = 11;

bool reached(const QDate &today, int day) {
    return day == lastDayOfMonth ? today.day() == today.daysInMonth() : today.day() >= day;
}

QString refusalText(int day) {
    const QString dayText = day == lastDayOfMonth ? u"月末"_s : u"%1日"_s.arg(day);
    return u"選択された同意書の更新を行うことはできません。\r\n更新基準日(%1)を過ぎてから更新可能となります。"_s
        .arg(dayText);
}

} // namespace

RenewalPermit renewalPermit(const QDate &today, const QDate &rangeStart, int referenceDay) {
    const int day = referenceDay == lastDayOfMonth || referenceDay > 0 ? referenceDay : defaultDay;
    const QDate permitMonth = QDate(rangeStart.year(), rangeStart.month(), 1).addMonths(1);
    const QDate month(today.year(), today.month(), 1);
    if (permitMonth.isValid() && (month > permitMonth || (month == permitMonth && reached(today, day))))
        return {true, {}};
    return {false, refusalText(day)};
}
