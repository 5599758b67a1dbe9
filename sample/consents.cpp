#include "sample/consents.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

QDate firstOfMonth(QDate date) {
    return {date.year(), date.month(), 1};
}

QDate endOfMonth(QDate date, int monthsOn) {
    return firstOfMonth(date).addMonths(monthsOn + 1).addDays(-1);
}

/// A day of the range, no Sunday where there is another: practices are closed.
QDate anyDay(Random &random, QDate first, QDate last) {
    const int days = static_cast<int>(first.daysTo(last));
    QDate day = first.addDays(random.between(0, std::max(0, days)));
    if (day.dayOfWeek() == Qt::Sunday && day < last)
        day = day.addDays(1);
    else if (day.dayOfWeek() == Qt::Sunday && day > first)
        day = day.addDays(-1);
    return day;
}

/// How the consents of a kind follow each other.
struct Chain {
    int months; ///< that a period runs
    int before; ///< consents before the newest
    int ending; ///< month in which the newest period ends, counted from the day's own
};

/// A consent can only lie behind us, so the furthest end needs a day past the middle of its month.
int furthestEnd(int months, QDate day) {
    return day.day() > 15 ? months : months - 1;
}

int massageEnd(Random &random, Course course, QDate day) {
    const int furthest = furthestEnd(6, day);
    switch (course) {
    case Course::Due:
    case Course::Requested:
        return random.between(0, 1);
    case Course::Received:
        return day.day() > 15 ? 0 : random.between(-1, 0);
    case Course::Lapsed:
        return random.between(-3, -1);
    case Course::Ended:
        return random.between(-10, 2);
    case Course::New:
        return random.between(2, furthest);
    case Course::Running:
        break;
    }
    return random.between(0, furthest);
}

/// An answer that is ready extends the period that it answers: in the first half of a month, one that has
/// just ended.
int deformityEnd(Random &random, Course course, QDate day) {
    if (course == Course::Received)
        return day.day() > 15 ? 0 : -1;
    return random.between(0, furthestEnd(1, day));
}

/// The days whose mid-month period ends with that month's end.
Period daysThatEnd(QDate end, int months, QDate notAfter) {
    const QDate first = firstOfMonth(end).addMonths(-months).addDays(15);
    return {first, std::min(firstOfMonth(end).addMonths(1 - months).addDays(14), notAfter)};
}

/// A new period starts behind the running one, or with the consent where that came late.
Period nextPeriod(QDate runningEnd, QDate consentDay, int months) {
    return {std::max(runningEnd.addDays(1), consentDay), periodEnd(consentDay, months)};
}

QString anyRemark(Random &random) {
    static const QList<QString> remarks = {
        u"郵送にて依頼"_s,         u"次回往診時に　依頼"_s,
        u"ＦＡＸ済　返信待ち"_s,   u"家族が受診の際に持参"_s,
        u"用紙は病院指定のもの"_s, u"文書料あり"_s,
        u"入院中のため保留"_s,     u""_s,
    };
    return random.percent(25) ? random.pick(remarks) : QString();
}

void fillRequest(Random &random, Consent &consent) {
    consent.requested = true;
    consent.toHospital = random.percent(60);
    consent.contact = random.percent(40);
    consent.sent = consent.contact && random.percent(70);
}

/// Particulars that older rows and newest rows have alike.
void fillParticulars(Random &random, Consent &consent) {
    static const QList<QString> methods = {u"用紙郵送"_s, u"ＦＡＸ"_s, u"用紙郵送,ＦＡＸ"_s, u"本人持参"_s};
    consent.examined = random.percent(85) ? consent.day.addDays(-random.below(4)) : QDate();
    if (random.percent(60))
        consent.method = random.below(5);
    if (random.percent(15))
        consent.ownMethods = random.pick(methods);
    consent.remark = anyRemark(random);
    if (random.percent(80))
        consent.updated = officeTime(random, consent.day.addDays(random.below(5)));
}

/// An answer of the last days: entered, and ready for the renewal.
void receive(Random &random, Consent &consent, int months, QDate day) {
    fillRequest(random, consent);
    consent.received = true;
    const QDate middle =
        day.day() > 15 ? firstOfMonth(day).addDays(15) : firstOfMonth(day).addMonths(-1).addDays(15);
    consent.againDay = anyDay(random, std::max(middle, day.addDays(-10)), day);
    consent.again = nextPeriod(consent.period.end, consent.againDay, months);
}

void standOn(Random &random, Course course, Consent &newest, int months, QDate day) {
    if (course == Course::Received)
        receive(random, newest, months, day);
    else if (course == Course::Requested || (course == Course::Lapsed && random.percent(40)))
        fillRequest(random, newest);
}

/// Rows that were renewed keep what led to the next one.
void linkOlder(Random &random, QList<Consent> &consents) {
    for (int i = 0; i + 1 < consents.size(); ++i) {
        Consent &older = consents[i];
        if (random.percent(20)) // kept before re-consents were entered ahead
            continue;
        fillRequest(random, older);
        older.received = true;
        older.againDay = consents.at(i + 1).day;
        older.again = consents.at(i + 1).period;
    }
    for (int i = 0; i + 1 < consents.size(); ++i)
        if (random.percent(6))
            consents[i].disabled = random.percent(60) ? std::optional<int>() : 1;
}

QList<Consent> makeChain(Random &random, const Chain &chain, Course course, QDate day) {
    const bool oral = random.percent(12);
    QList<Consent> consents;
    QDate runningEnd;
    for (int i = chain.before; i >= 0; --i) {
        const QDate end = endOfMonth(day, chain.ending - chain.months * i);
        const Period days = daysThatEnd(end, chain.months, day);
        // Four of five renewals are in time.
        const bool inTime = runningEnd.isValid() && random.percent(80);
        Consent consent;
        consent.day = anyDay(random, days.start, inTime ? std::min(runningEnd, days.end) : days.end);
        consent.period = runningEnd.isValid() ? nextPeriod(runningEnd, consent.day, chain.months)
                                              : Period{consent.day, end};
        consent.oral = i < chain.before && oral; // a first consent is always written
        runningEnd = end;
        fillParticulars(random, consent);
        consents.append(consent);
    }
    consents.last().newest = true;
    standOn(random, course, consents.last(), chain.months, day);
    linkOlder(random, consents);
    return consents;
}

/// A form that the doctor filled in wrongly: later than the newest row, but not for claims.
void addSpoiltForm(Random &random, QList<Consent> &chain, QDate day) {
    Consent spoilt = chain.last();
    spoilt.day = spoilt.day.addDays(random.between(1, 5));
    if (spoilt.day > day)
        return;
    spoilt.period = {std::max(spoilt.period.start, spoilt.day), periodEnd(spoilt.day, 6)};
    spoilt.newest = false;
    spoilt.disabled = 1;
    spoilt.remark = u"記載誤りのため　取り直し"_s;
    chain.append(spoilt);
}

/// The monthly consents of a deformity correction, none before the patient's first massage consent.
QList<Consent> makeCorrections(Random &random, const QList<Consent> &massage, Course course, QDate day) {
    const Chain chain{1, random.between(0, 5), deformityEnd(random, course, day)};
    QList<Consent> consents = makeChain(random, chain, course, day);
    while (consents.size() > 1 && consents.first().day < massage.first().day)
        consents.removeFirst();
    for (Consent &consent : consents)
        consent.deformity = true;
    return consents;
}

} // namespace

QDate periodEnd(QDate consentDay, int months) {
    return firstOfMonth(consentDay).addMonths(consentDay.day() > 15 ? months + 1 : months).addDays(-1);
}

QDateTime officeTime(Random &random, QDate day) {
    return {day, QTime(9, 0).addSecs(random.below(8 * 3600)), Qt::UTC};
}

QList<Consent> makeConsents(Random &random, Course course, bool deformity, QDate day) {
    const Chain massage{6, course == Course::New ? 0 : random.between(0, 5), massageEnd(random, course, day)};
    QList<Consent> consents = makeChain(random, massage, course, day);
    if (deformity) {
        const QList<Consent> corrections = makeCorrections(random, consents, course, day);
        consents.last().correction = corrections.last().period;
        return consents + corrections;
    }
    if (course == Course::Running && random.percent(3))
        addSpoiltForm(random, consents, day);
    return consents;
}

} // namespace sample
