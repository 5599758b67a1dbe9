#pragma once

#include "db/tables/keys.h"

#include <QDate>
#include <QString>
#include <span>
#include <vector>

/// A consent as the time line sees it.
struct TimeLineConsent {
    Period period;
    bool deformity = false;
    bool usable = true; ///< false: not used for claims, covers nothing
};

/// A consent's place in its lane. Spans of one track do not overlap.
struct TimeLineSpan {
    int row; ///< of the consents given
    Period period;
    bool covers;
    int track;
};

/// The consents of one kind, and the days without cover between the first and the last that count.
struct TimeLineLane {
    bool deformity = false;
    std::vector<TimeLineSpan> spans; ///< by start
    std::vector<Period> gaps;        ///< by start
    int tracks = 0;
    QDate coveredTo; ///< last day of cover; invalid when nothing covers
};

struct TimeLine {
    std::vector<TimeLineLane> lanes; ///< massage first; a kind without periods has none
    Period shown;                    ///< whole months that hold everything and today; empty without lanes
};

/// Lays a patient's consents out. Days count up to today, or to the end of a period that reaches further;
/// after treatment has ended no more cover is missed. Rows without a whole period are left out.
/// @param ended the day treatment ended; invalid while it goes on
TimeLine makeTimeLine(std::span<const TimeLineConsent> consents, const QDate &today, const QDate &ended = {});

/// How a lane stands today, e.g. "同意：本日は要加療期間内（2026/12/31 まで、あと 40日）　空白 1か所 計14日".
QString coverText(const TimeLineLane &lane, const QDate &today);

/// What a gap says on hover.
QString gapText(const Period &gap);
