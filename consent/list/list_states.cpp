#include "consent/list/list_states.h"

void ListStates::read(const ListContext &context) {
    m_read.clear();
    m_urgency.clear();
    if (context.readOnly)
        m_chosen = RowState::All;
    for (int record = 0; record < m_records.count(); ++record) {
        const QDate end = m_records.date(record, ListField::PeriodEnd);
        const bool ended = urgencyOf(end, context.today) == Urgency::Ended;
        const bool isLimited = context.from.isValid() && !context.readOnly;
        const bool inRange = !ended || !isLimited || (end >= context.from && end <= context.to);
        m_urgency.push_back(urgencyIn(context, end));
        m_read.push_back(statesOf(m_records.marks(record), m_urgency.back(), inRange));
    }
}

RowStates ListStates::now(int record) const {
    const RowStates read = m_read[size_t(record)];
    return m_edits.isTouched(record)
               ? statesOf(m_edits.marks(record), m_urgency[size_t(record)], isIn(read, RowState::All))
               : read;
}

void ListStates::choose(RowState state) {
    m_chosen = state;
    m_shown.resize(m_read.size());
    for (size_t record = 0; record < m_read.size(); ++record)
        m_shown[record] = isIn(now(int(record)), state);
}

StateCounts ListStates::counts(const std::vector<bool> &kept) const {
    StateCounts counts{};
    for (size_t record = 0; record < m_read.size(); ++record) {
        const RowStates states = kept[record] ? now(int(record)) : 0;
        for (size_t state = 0; state < counts.size(); ++state)
            counts[state] += isIn(states, RowState(state));
    }
    return counts;
}

int ListStates::lapsedOutside(const std::vector<bool> &kept) const {
    int count = 0;
    for (size_t record = 0; record < m_read.size(); ++record)
        count += kept[record] && !isIn(m_read[record], RowState::All);
    return count;
}
