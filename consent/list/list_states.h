#pragma once

#include "consent/list/list_edits.h"
#include "consent/rows/row_states.h"

#include <array>

/// How many rows are in each state, by RowState.
using StateCounts = std::array<int, size_t(RowState::Count)>;

/// The states of the list's rows, edits included, and the one whose rows are shown. Whoever leaves that state
/// by an edit stays until it is chosen again: a list that jumps away under the typing hand is worse.
class ListStates {
public:
    /// The arguments outlive the states.
    ListStates(const ListRecords &records, const ListEdits &edits) : m_records(records), m_edits(edits) {}

    /// The records were read anew; then a state is chosen once the edits over them are known.
    void read(const ListContext &context);
    /// Shows the rows that are in a state now.
    void choose(RowState state);
    void chooseAgain() { choose(m_chosen); }
    RowState chosen() const { return m_chosen; }
    bool hides(int record) const { return !m_shown[size_t(record)]; }
    /// A row that came along because it has lapsed, outside of the range, and is not shown now: it is no part
    /// of the list.
    bool isAside(int record) const { return !isIn(m_read[size_t(record)], RowState::All) && hides(record); }

    /// Of the records that are kept, by record.
    StateCounts counts(const std::vector<bool> &kept) const;
    /// How many of them have lapsed outside of the range.
    int lapsedOutside(const std::vector<bool> &kept) const;

private:
    RowStates now(int record) const;

    const ListRecords &m_records;
    const ListEdits &m_edits;
    std::vector<RowStates> m_read; ///< by record, as read
    std::vector<Urgency> m_urgency;
    std::vector<bool> m_shown; ///< by record: in the state when it was chosen
    RowState m_chosen = RowState::All;
};
