#include "consent/list/list_edits.h"

#include "consent/rows/list_cells.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// A row after values were saved over it. Text that is no date gives way to a date only, and an answer that
// stood in the massage row's columns has moved to the row's own.
ReadRow writtenOver(ReadRow row, const ConsentRowValues &values) {
    row.values = values;
    row.updateTime.clear();
    row.answeredAsMassage = false;
    if (values.reconsent.isValid())
        row.oddReconsent.clear();
    if (values.nextStart.isValid())
        row.oddStart.clear();
    if (values.nextEnd.isValid())
        row.oddEnd.clear();
    return row;
}

} // namespace

ConsentRowValues ListEdits::values(int record) const {
    const auto edit = m_edits.constFind(record);
    return edit != m_edits.cend() ? *edit : stored(record);
}

ConsentRowValues ListEdits::stored(int record) const {
    const auto written = m_written.constFind(record);
    return written != m_written.cend() ? written->values : m_records.values(record);
}

ReadRow ListEdits::storedRow(int record) const {
    const auto written = m_written.constFind(record);
    return written != m_written.cend() ? *written : m_records.row(record);
}

ReadRow ListEdits::seen(int record) const {
    ReadRow row = storedRow(record);
    if (const auto edit = m_edits.constFind(record); edit != m_edits.cend()) {
        row.values = *edit;
        row.updateTime.clear();
    }
    return row;
}

RowMarks ListEdits::marks(int record) const {
    if (!isTouched(record))
        return m_records.marks(record);
    const ConsentRowValues now = values(record);
    return {m_records.isDeformity(record), now.contact != 0, now.requested != 0, now.received != 0};
}

void ListEdits::set(int record, const ConsentRowValues &now) {
    if (now.same(stored(record)))
        m_edits.remove(record);
    else
        m_edits.insert(record, now);
}

bool ListEdits::isEdited(int record, ListColumn column) const {
    const auto edit = m_edits.constFind(record);
    return edit != m_edits.cend() && cellDiffers(*edit, stored(record), column);
}

std::vector<ChangedRow> ListEdits::changed() const {
    std::vector<ChangedRow> changed;
    for (auto it = m_edits.cbegin(); it != m_edits.cend(); ++it)
        changed.push_back({{storedRow(it.key()), it.value()}, it.key()});
    std::sort(changed.begin(), changed.end(),
              [](const ChangedRow &a, const ChangedRow &b) { return a.record < b.record; });
    return changed;
}

void ListEdits::accept() {
    for (auto it = m_edits.cbegin(); it != m_edits.cend(); ++it)
        m_written.insert(it.key(), writtenOver(storedRow(it.key()), it.value()));
    drop();
}

void ListEdits::rebase(int record, const ReadRow &now, const ConsentRowValues &values) {
    m_written.insert(record, now);
    set(record, values);
}

void ListEdits::forget() {
    m_edits.clear();
    m_written.clear();
}

bool isSameRow(const ReadRow &now, const ReadRow &before) {
    return now.values.same(before.values) &&
           (before.updateTime.isEmpty() || now.updateTime == before.updateTime);
}

QString rowIdentity(const ConsentRowKey &key) {
    return u"%1/%2/%3/%4/%5/%6"_s.arg(key.patient.iKyotenCd)
        .arg(key.patient.iKyotenEb)
        .arg(key.patient.nIDNo)
        .arg(key.nDate)
        .arg(key.iHenkeiFlg)
        .arg(key.nHenkeiDouiDate);
}

QHash<QString, int> recordsByRow(const ListRecords &records) {
    QHash<QString, int> byRow;
    for (int record = 0; record < records.count(); ++record)
        byRow.insert(rowIdentity(records.key(record)), record);
    return byRow;
}
