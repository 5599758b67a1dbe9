#include "consent/rules/plausibility.h"

#include "app/base/dates.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int aheadAtMost = 7;   // days: a doctor dates a form a little ahead, not by a month
constexpr int backAtMost = 12;   // months
constexpr int longestPeriod = 7; // months: six from the middle of a month to the end of one
constexpr int latestStart = 12;  // months after the consent

QString named(const QString &field, const QDate &date) {
    return u"%1 %2（%3）"_s.arg(field, dateText(date), weekdayText(date));
}

QString distance(const QDate &from, const QDate &to) {
    const qint64 days = qAbs(from.daysTo(to));
    if (days < 62)
        return u"%1日"_s.arg(days);
    return days < 730 ? u"約%1か月"_s.arg(days / 30) : u"約%1年"_s.arg(days / 365);
}

void judgeConsent(const EnteredDates &entered, const QDate &today, QStringList &doubts) {
    const QDate &consent = entered.consent;
    if (consent > today.addDays(aheadAtMost))
        doubts.append(named(entered.field, consent) +
                      u"は、今日より%1先です。"_s.arg(distance(today, consent)));
    else if (consent < today.addMonths(-backAtMost))
        doubts.append(named(entered.field, consent) +
                      u"は、今日より%1前です。"_s.arg(distance(today, consent)));
    else if (entered.running.isValid() && consent <= entered.running)
        doubts.append(named(entered.field, consent) +
                      u"は、今の同意日 %1 より後の日付ではありません。"_s.arg(dateText(entered.running)));
}

// A period without a consent date is judged by today.
void judgeStart(const EnteredDates &entered, const QDate &today, QStringList &doubts) {
    const QDate &start = entered.period.start;
    const bool byToday = !entered.consent.isValid();
    const QDate reference = byToday ? today : entered.consent;
    if (!byToday && start < reference)
        doubts.append(named(u"要加療開始"_s, start) +
                      u"は、%1 %2 より前です。"_s.arg(entered.field, dateText(reference)));
    else if (start > reference.addMonths(latestStart) || start < reference.addMonths(-backAtMost))
        doubts.append(named(u"要加療開始"_s, start) +
                      u"は、%1より%2%3です。"_s.arg(byToday ? u"今日"_s : entered.field,
                                                    distance(reference, start),
                                                    start > reference ? u"後"_s : u"前"_s));
}

// Where no start was entered the period is counted from what stands for it.
void judgeEnd(const EnteredDates &entered, const QDate &today, QStringList &doubts) {
    const auto &[start, end] = entered.period;
    const QDate from = start.isValid() ? start : entered.consent.isValid() ? entered.consent : today;
    if (start.isValid() && end < start)
        doubts.append(named(u"要加療終了"_s, end) + u"は、要加療開始 %1 より前です。"_s.arg(dateText(start)));
    else if (entered.ruledEnd.isValid() && end > entered.ruledEnd)
        doubts.append(named(u"要加療終了"_s, end) +
                      u"は、規則の終了日 %1 より%2長くなります。"_s.arg(dateText(entered.ruledEnd),
                                                                        distance(entered.ruledEnd, end)));
    else if (!entered.ruledEnd.isValid() && end > from.addMonths(longestPeriod))
        doubts.append(named(u"要加療終了"_s, end) + u"までの期間は%1です。"_s.arg(distance(from, end)));
}

} // namespace

QStringList doubtsOf(const EnteredDates &entered, const QDate &today) {
    QStringList doubts;
    if (entered.consent.isValid())
        judgeConsent(entered, today, doubts);
    if (entered.period.start.isValid())
        judgeStart(entered, today, doubts);
    if (entered.period.end.isValid())
        judgeEnd(entered, today, doubts);
    return doubts;
}
