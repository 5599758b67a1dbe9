#include "consent/rules/period_text.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

QString shortDate(const QDate &date, const QDate &consentDate) {
    return date.toString(date.year() == consentDate.year() ? u"M/d"_s : u"yyyy/M/d"_s);
}

QString ruleText(const PeriodReckoning &reckoning) {
    QString text;
    if (reckoning.rule.placement == Placement::NextMonth)
        text = reckoning.moved ? u"翌月1日から"_s : u"1日から"_s;
    else
        text = reckoning.consentDate.day() > 15 ? u"16日以降"_s : u"15日以前"_s;

    if (reckoning.lengthened)
        text += u"・法改正により%1か月"_s.arg(reckoning.rule.months);
    else if (reckoning.rule.months != 6)
        text += u"・%1か月"_s.arg(reckoning.rule.months);
    return text;
}

// Why the start is not simply the day after the running period.
QString startReasons(const PeriodReckoning &reckoning) {
    QStringList reasons;
    const QDate &previousEnd = reckoning.previousEnd;
    if (previousEnd.isValid() && previousEnd.addDays(1) < reckoning.consentDate)
        reasons.append(u"前回終了 %1 より後の同意"_s.arg(shortDate(previousEnd, reckoning.consentDate)));
    if (reckoning.sundays > 0)
        reasons.append(u"日曜 %1日"_s.arg(reckoning.sundays));
    if (reckoning.holidays > 0)
        reasons.append(u"祝日 %1日"_s.arg(reckoning.holidays));
    return reasons.join(u"・");
}

QString endDifference(QStringView name, const QDate &stored, const QDate &ruled, const QDate &consentDate) {
    if (stored == ruled)
        return {};
    const QString storedText = stored.isValid() ? shortDate(stored, consentDate) : u"なし"_s;
    return u"%1 %2（規則 %3）"_s.arg(name, storedText, shortDate(ruled, consentDate));
}

} // namespace

QString explainPeriod(const PeriodReckoning &reckoning, ConsentName name) {
    const QDate &consent = reckoning.consentDate;
    if (!consent.isValid())
        return {};
    const QString said = u"%1 %2 → %3 → %4"_s.arg(name == ConsentName::ReConsent ? u"再同意"_s : u"同意"_s,
                                                  shortDate(consent, consent), ruleText(reckoning),
                                                  shortDate(reckoning.end, consent));
    if (!reckoning.period.start.isValid())
        return said + u" は開始より前のため期間なし"_s;

    const QString start = u"開始 "_s + shortDate(reckoning.period.start, consent);
    const QString reasons = startReasons(reckoning);
    return said + (reasons.isEmpty() ? u", "_s : u", "_s + reasons + u" → "_s) + start;
}

QString periodDifference(const Period &stored, const PeriodReckoning &reckoning) {
    const Period &ruled = reckoning.period;
    if (!ruled.start.isValid())
        return {};
    QStringList differences{endDifference(u"開始", stored.start, ruled.start, reckoning.consentDate),
                            endDifference(u"終了", stored.end, ruled.end, reckoning.consentDate)};
    differences.removeAll(QString());
    return differences.isEmpty() ? QString() : u"規則と異なります: "_s + differences.join(u"、");
}
