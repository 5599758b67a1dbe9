#include "consent/rows/list_filter.h"

#include "app/base/dates.h"

#include <algorithm>
#include <array>
#include <span>

using namespace Qt::Literals::StringLiterals;

QString whyRangeIsWrong(const ListFilter &filter) {
    if (!filter.from.isValid() || !filter.to.isValid())
        return u"対象期間の日付を入力してください。"_s;
    if (filter.to < filter.from)
        return u"対象期間の終了月は開始月以前に設定できません。\r\n対象期間を設定しなおしてください。"_s;
    return {};
}

ListOrder listOrderOf(int number) {
    return number >= 0 && number <= int(ListOrder::EndSoonest) ? ListOrder(number)
                                                               : ListOrder::HospitalAndDoctor;
}

PatientOrder patientOrderOf(int number) {
    return number == int(PatientOrder::Kana) ? PatientOrder::Kana : PatientOrder::Number;
}

const QStringList &listOrderNames() {
    static const QStringList names{u"病院・医師の番号順"_s, u"新しい同意の医療機関・医師名順"_s,
                                   u"新しい同意の病院かな順"_s, u"利用者順"_s, u"期限の近い順"_s};
    return names;
}

const QStringList &patientOrderNames() {
    static const QStringList names{u"利用者番号順"_s, u"かな順"_s};
    return names;
}

namespace {

std::span<const QuickRangeInfo> quickRanges() {
    static const std::array<QuickRangeInfo, 5> ranges{{
        {QuickRange::ThisMonth, u"今月"_s, u"今月に終了する同意を表示します"_s, 0, 1},
        {QuickRange::NextMonth, u"来月"_s, u"来月に終了する同意を表示します"_s, 1, 1},
        {QuickRange::ThreeMonths, u"3か月"_s, u"今月から3か月の間に終了する同意を表示します"_s, 0, 3},
        {QuickRange::ThisAndNext, u"今月と来月"_s, u"今月と来月に終了する同意を、期限の近い順に表示します"_s,
         0, 2, true},
        {QuickRange::SinceLastMonth, u"先月から"_s,
         u"先月から7か月先までに終了する同意を表示します。同意更新ができ、更新した同意も表示に残ります"_s, -1,
         9},
    }};
    return ranges;
}

} // namespace

const QuickRangeInfo &quickRangeInfo(QuickRange range) {
    return *std::ranges::find(quickRanges(), range, &QuickRangeInfo::range);
}

void setQuickRange(ListFilter &filter, QuickRange range, const QDate &today) {
    const QuickRangeInfo &info = quickRangeInfo(range);
    filter.setMonths(today, info.first, info.months);
    if (info.endSoonestFirst)
        filter.order = ListOrder::EndSoonest;
}

std::optional<QuickRange> quickRangeOf(const ListFilter &filter, const QDate &today) {
    for (const QuickRangeInfo &info : quickRanges()) {
        ListFilter asked = filter;
        setQuickRange(asked, info.range, today);
        if (asked == filter)
            return info.range;
    }
    return std::nullopt;
}

QStringList filterTexts(const ListFilter &filter) {
    QStringList texts{u"対象期間："_s + dateText(filter.from) + u"～"_s + dateText(filter.to)};
    const auto add = [&](bool holds, const QString &text) {
        if (holds)
            texts.append(text);
    };
    add(filter.view == ListView::History, u"履歴"_s);
    add(filter.kind == TreatmentKind::Massage, u"マッサージ"_s);
    add(filter.kind == TreatmentKind::Acupuncture, u"鍼灸"_s);
    add(filter.procedure == Procedure::Written, u"書面"_s);
    add(filter.procedure == Procedure::Oral, u"口頭"_s);
    for (const FilterName &chosen : filter.names)
        texts.append(chosen.caption + u"："_s + chosen.name);
    add(!filter.requestMethod.isEmpty(), u"依頼方法："_s + filter.requestMethod);
    add(filter.ended, u"終了した利用者を含む"_s);
    return texts;
}
