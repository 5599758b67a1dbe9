#pragma once

#include "consent/record/grid_save.h"
#include "consent/rows/list_columns.h"
#include "consent/rows/list_record.h"

#include <QHash>
#include <vector>

/// A row whose values differ from what was read.
struct ChangedRow : RowEdit {
    int record;
};

/// The user's edits over the rows that the list read, and what of them was saved since.
class ListEdits {
public:
    /// @param records outlive the edits; forget() when others are read into them
    explicit ListEdits(const ListRecords &records) : m_records(records) {}

    /// A row's values with the edits over them.
    ConsentRowValues values(int record) const;
    /// What the database holds of a row as far as is known here.
    ConsentRowValues stored(int record) const;
    /// All of it that is compared before it is written over.
    ReadRow storedRow(int record) const;
    /// A row as the user sees it. An edited row's update time is not known until it has been saved and read
    /// again.
    ReadRow seen(int record) const;
    RowMarks marks(int record) const;
    /// Whether the row was edited, or saved, since it was read.
    bool isTouched(int record) const { return m_edits.contains(record) || m_written.contains(record); }
    bool isEdited(int record, ListColumn column) const;

    /// Values that are those stored are no edit.
    void set(int record, const ConsentRowValues &values);
    void drop() { m_edits.clear(); }
    /// The edits have been written: they are what the rows hold now.
    void accept();
    /// A row stands as somebody else wrote it; the values that it is to hold are its edit.
    void rebase(int record, const ReadRow &now, const ConsentRowValues &values);
    void forget();

    int count() const { return int(m_edits.size()); }
    /// In the order of the records.
    std::vector<ChangedRow> changed() const;

private:
    const ListRecords &m_records;
    QHash<int, ConsentRowValues> m_edits; ///< by record
    QHash<int, ReadRow> m_written;        ///< by record: what was saved since the rows were read
};

/// Whether nobody has written a row since it was read. A row that was saved and not read again since has no
/// update time; its values decide.
bool isSameRow(const ReadRow &now, const ReadRow &before);

/// A row's key as one text, for finding it again after the list was read anew.
QString rowIdentity(const ConsentRowKey &key);

/// The records of the rows by their keys.
QHash<QString, int> recordsByRow(const ListRecords &records);
