#include "consent/entry/time_line.h"

#include "app/base/dates.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isWhole(const Period &period) {
    return period.start.isValid() && period.end.isValid() && period.start <= period.end;
}

qint64 daysOf(const Period &period) {
    return period.start.daysTo(period.end) + 1;
}

QDate monthStart(const QDate &day) {
    return {day.year(), day.month(), 1};
}

QDate monthEnd(const QDate &day) {
    return {day.year(), day.month(), day.daysInMonth()};
}

// Each span goes on the first track that is free on its first day.
void giveTracks(TimeLineLane &lane) {
    std::vector<QDate> busyTo;
    for (TimeLineSpan &span : lane.spans) {
        const auto free =
            std::ranges::find_if(busyTo, [&](const QDate &end) { return end < span.period.start; });
        span.track = int(free - busyTo.begin());
        if (free == busyTo.end())
            busyTo.push_back(span.period.end);
        else
            *free = span.period.end;
    }
    lane.tracks = int(busyTo.size());
}

void findGaps(TimeLineLane &lane, const QDate &missedTo) {
    QDate coveredTo;
    const auto miss = [&](const QDate &lastMissed) {
        if (coveredTo.isValid() && coveredTo < lastMissed)
            lane.gaps.push_back({coveredTo.addDays(1), lastMissed});
    };
    for (const TimeLineSpan &span : lane.spans) {
        if (!span.covers)
            continue;
        miss(span.period.start.addDays(-1));
        if (!coveredTo.isValid() || coveredTo < span.period.end)
            coveredTo = span.period.end;
    }
    miss(missedTo);
    lane.coveredTo = coveredTo;
}

TimeLineLane makeLane(std::span<const TimeLineConsent> consents, bool deformity, const QDate &missedTo) {
    TimeLineLane lane;
    lane.deformity = deformity;
    for (size_t row = 0; row < consents.size(); ++row)
        if (consents[row].deformity == deformity && isWhole(consents[row].period))
            lane.spans.push_back({int(row), consents[row].period, consents[row].usable, 0});
    std::ranges::stable_sort(lane.spans, {}, [](const TimeLineSpan &span) { return span.period.start; });
    giveTracks(lane);
    findGaps(lane, missedTo);
    return lane;
}

} // namespace

TimeLine makeTimeLine(std::span<const TimeLineConsent> consents, const QDate &today, const QDate &ended) {
    const QDate missedTo = ended.isValid() ? std::min(today, ended) : today;
    TimeLine line;
    for (const bool deformity : {false, true})
        if (TimeLineLane lane = makeLane(consents, deformity, missedTo); !lane.spans.empty())
            line.lanes.push_back(std::move(lane));
    if (line.lanes.empty())
        return line;
    line.shown = {monthStart(today), monthEnd(today)};
    for (const TimeLineLane &lane : line.lanes)
        for (const TimeLineSpan &span : lane.spans) {
            line.shown.start = std::min(line.shown.start, monthStart(span.period.start));
            line.shown.end = std::max(line.shown.end, monthEnd(span.period.end));
        }
    return line;
}

QString coverText(const TimeLineLane &lane, const QDate &today) {
    QString text = lane.deformity ? u"変形徒手："_s : u"同意："_s;
    const bool covered = std::ranges::any_of(lane.spans, [&](const TimeLineSpan &span) {
        return span.covers && span.period.start <= today && today <= span.period.end;
    });
    if (covered) {
        const auto next =
            std::ranges::find_if(lane.gaps, [&](const Period &gap) { return gap.start > today; });
        const QDate to = next == lane.gaps.end() ? lane.coveredTo : next->start.addDays(-1);
        text += u"本日は要加療期間内（%1 まで、あと %2日）"_s.arg(dateText(to)).arg(today.daysTo(to));
    } else if (lane.coveredTo.isValid() && lane.coveredTo < today) {
        text += u"%1 で要加療期間が終わっています"_s.arg(dateText(lane.coveredTo));
    } else {
        text += u"本日は要加療期間外です"_s;
    }
    if (lane.gaps.empty())
        return text + u"　空白なし"_s;
    qint64 days = 0;
    for (const Period &gap : lane.gaps)
        days += daysOf(gap);
    return text + u"　空白 %1か所 計%2日"_s.arg(lane.gaps.size()).arg(days);
}

QString gapText(const Period &gap) {
    return u"同意の空白　%1～%2（%3日間）"_s.arg(dateText(gap.start), dateText(gap.end)).arg(daysOf(gap));
}
