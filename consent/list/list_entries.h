#pragma once

#include "consent/list/list_edits.h"
#include "consent/list/list_undo.h"
#include "consent/rows/list_cells.h"

#include <QHash>
#include <optional>
#include <vector>

class ListStates;

/// What was entered, for the same rows when they are read anew.
struct KeptEntries {
    std::vector<TypedRow> edits;
    std::vector<ConsentRowKey> targets;
    ListUndo undo;
    QHash<int, ReadRow> rowsOfSteps; ///< by the record number of then

    bool isEmpty() const { return edits.empty() && targets.empty() && rowsOfSteps.isEmpty(); }
};

/// What the user enters over the rows that were read: edits, 対象 ticks, and the dates and periods that the
/// rules propose along with them. What is entered at once is one step that can be taken back.
class ListEntries {
public:
    /// The arguments outlive the entries; forget() when other rows are read into them.
    ListEntries(const ListRecords &records, const ListContext &context, const ListStates &states)
        : m_records(records), m_context(context), m_states(states) {}

    const ListEdits &edits() const { return m_edits; }
    bool isTarget(int record) const { return m_target[size_t(record)]; }
    /// How many are ticked 対象.
    int targetCount() const;
    std::vector<ConsentRowKey> targetKeys() const;
    bool mayEdit(int record, ListColumn column) const;

    /// @name Entries
    /// Each gives the step that it was; nullptr when nothing has changed.
    ///@{
    /// Takes what an editor gives back. `false` in `taken` for a value that the column cannot hold.
    const ListStep *set(int record, ListColumn column, const QVariant &value, bool *taken);
    /// Ticks or clears a tick column on those of the records that may be edited.
    const ListStep *tick(const std::vector<int> &records, ListColumn column, bool on);
    /// The rows become what was read; 対象 stays.
    const ListStep *restore(const std::vector<int> &records);
    const ListStep *undo();
    const ListStep *redo();
    /// What was done so far cannot be taken back any more.
    void forgetSteps() { m_undo.forget(); }
    ///@}
    /// Why a period could not be reckoned since this was asked last; each trouble is told once.
    QString takeTrouble() { return std::exchange(m_trouble, {}); }
    /// Ticks a row without a step: the user did not.
    void tickTarget(int record) { m_target[size_t(record)] = true; }

    void drop();
    /// The edits have been written: they are what the rows hold now.
    void accept();
    /// The records are others now.
    void forget();
    KeptEntries kept() const;
    /// Takes entries over to the same rows, read anew. Gives what was typed into rows that a colleague
    /// changed or removed.
    std::vector<TypedRow> takeOver(const KeptEntries &kept);
    /// The edits, each with whose row it is.
    std::vector<TypedRow> typedRows() const;
    /// A row stands as somebody else wrote it, and is to hold these values. The steps before are none any
    /// more.
    void rebase(int record, const ReadRow &now, const ConsentRowValues &values);

private:
    void setValues(int record, const ConsentRowValues &now);
    void setTarget(int record, bool on);
    void setTick(int record, ListColumn column, bool on);
    void tickReceived(int record, ConsentRowValues &now);
    void takeReconsent(int record, const QDate &before, ConsentRowValues &now);
    /// Nothing when it cannot be reckoned.
    std::optional<Period> propose(int record, const QDate &reconsent);
    void noteTrouble();
    bool keepsPeriod(int record, const ConsentRowValues &now, const QDate &reconsent);
    void followMassage(int record, const QDate &before, const QDate &reconsent);
    std::vector<int> deformityRecords(const PatientKey &patient);
    void takeOverSteps(const KeptEntries &kept, const QHash<QString, int> &now);

    const ListRecords &m_records;
    const ListContext &m_context;
    const ListStates &m_states;
    ListEdits m_edits{m_records};
    ListUndo m_undo;
    std::vector<bool> m_target;
    /// Deformity-correction records by patient number; made when they are first asked for.
    std::optional<QHash<qint32, std::vector<int>>> m_deformity;
    QString m_trouble; ///< of the entry under way
};
