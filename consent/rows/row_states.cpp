#include "consent/rows/row_states.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

const RowStateInfo &rowState(RowState state) {
    static const std::array<RowStateInfo, size_t(RowState::Count)> states{{
        {u"すべて"_s, u"対象期間に終了する同意をすべて表示します"_s},
        {u"期限切れ"_s, u"要加療期間が昨日までに終了した行。対象期間外の行も表示します"_s},
        {u"14日以内"_s, u"要加療期間が今日から14日以内に終了する行"_s},
        {u"未依頼"_s, u"「依頼」も「受領」も付いていない行"_s},
        {u"返事待ち"_s, u"「依頼」が付き、「受領」が付いていない行"_s},
        {u"受領済み"_s, u"「受領」が付いていて、まだ同意更新をしていない行"_s},
        {u"連絡なし"_s, u"「連絡」が付いていない行（変形徒手の行を除く）"_s},
    }};
    return states[size_t(state)];
}

RowStates statesOf(const RowMarks &marks, Urgency urgency, bool inRange) {
    RowStates states = 0;
    const auto add = [&](RowState state, bool holds) {
        if (holds)
            states = RowStates(states | 1 << int(state));
    };
    add(RowState::Lapsed, urgency == Urgency::Ended);
    if (!inRange)
        return states;
    add(RowState::All, true);
    add(RowState::DueSoon, urgency == Urgency::DueSoon);
    add(RowState::NotRequested, !marks.requested && !marks.received);
    add(RowState::Waiting, marks.requested && !marks.received);
    add(RowState::Received, marks.received);
    add(RowState::NotContacted, !marks.contact && !marks.deformity);
    return states;
}
