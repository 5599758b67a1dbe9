#include "consent/list/list_undo.h"

#include <QSet>
#include <utility>

std::vector<int> ListStep::records() const {
    std::vector<int> records;
    QSet<int> known;
    const auto add = [&](int record) {
        if (known.contains(record))
            return;
        known.insert(record);
        records.push_back(record);
    };
    for (const Edit &edit : edits)
        add(edit.record);
    for (const Target &target : targets)
        add(target.record);
    return records;
}

void ListUndo::begin(const QString &what) {
    m_open = {what, {}, {}};
}

void ListUndo::edited(int record, const ConsentRowValues &before, const ConsentRowValues &after) {
    if (!after.same(before))
        m_open.edits.push_back({record, before, after});
}

const ListStep *ListUndo::end() {
    if (m_open.isEmpty())
        return nullptr;
    m_steps.resize(m_done);
    m_steps.push_back(std::exchange(m_open, {}));
    m_done = m_steps.size();
    return &m_steps.back();
}

const ListStep *ListUndo::back() {
    return m_done == 0 ? nullptr : &m_steps[--m_done];
}

const ListStep *ListUndo::again() {
    return m_done == m_steps.size() ? nullptr : &m_steps[m_done++];
}

void ListUndo::forget() {
    m_steps.clear();
    m_done = 0;
}
