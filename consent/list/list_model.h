#pragma once

#include "consent/list/list_entries.h"
#include "consent/list/list_states.h"
#include "consent/rows/list_view.h"

#include <QAbstractTableModel>
#include <QHash>
#include <optional>
#include <vector>

/// What was taken back or done again.
struct UndoneStep {
    int record = -1; ///< the row to look at; −1: there was nothing to do
    QString what;    ///< for the user: the column, and the row or how many
};

/// The grid's rows: what the query gave, the edits over it, the state whose rows are shown, what is
/// narrowed away, and the order.
/// A row number counts what is shown, a record number what was read.
class ConsentListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    /// Gives a row's Urgency as an int.
    static constexpr int UrgencyRole = Qt::UserRole + 1;
    /// Whether the cell's value has been edited and not saved.
    static constexpr int EditedRole = Qt::UserRole + 2;

    explicit ConsentListModel(QObject *parent = nullptr) : QAbstractTableModel(parent) {}

    /// Shows new rows, without edits and ticks.
    void load(Recordset rows, const ListContext &context);
    /// Shows new rows; edits and 対象 ticks stay on the rows that are still there with the values that were
    /// edited over. Gives what was typed into rows that a colleague changed or removed.
    std::vector<TypedRow> reload(Recordset rows, const ListContext &context);

    /// What the rows say of today; a list stays open over midnight.
    void setToday(const QDate &today);

    const ListRecords &records() const { return m_records; }
    ConsentRowValues values(int record) const { return edits().values(record); }
    /// A record as it is shown.
    ListRow row(int record) const;
    std::vector<ListRow> rows(const std::vector<int> &records) const;
    int recordOfRow(int row) const { return m_shown[size_t(row)]; }
    /// −1 when the record is narrowed away.
    int rowOfRecord(int record) const;
    bool isTarget(int record) const { return m_entries.isTarget(record); }
    QString who(int record) const { return m_records.who(record); }

    /// Records that are shown, in the order shown.
    const std::vector<int> &shownRecords() const { return m_shown; }
    /// Records ticked 対象 that are shown, in the order shown.
    std::vector<int> targetRecords() const;
    /// How many more are ticked 対象 and narrowed away.
    int targetsOutOfSight() const;
    /// Keys of all rows ticked 対象.
    std::vector<ConsentRowKey> targetKeys() const { return m_entries.targetKeys(); }
    /// Ticks 対象 on the rows of these keys, as far as they are in the list.
    void tickTargets(const std::vector<ConsentRowKey> &keys);
    /// Records ticked 受領 that are shown, in the order shown.
    std::vector<int> receivedRecords() const;
    /// How many more are ticked 受領 and narrowed away.
    int receivedOutOfSight() const;
    int changedCount() const { return edits().count(); }
    bool hasChanges() const { return edits().count() > 0; }
    std::vector<ChangedRow> changedRows() const { return edits().changed(); }
    /// The edits, each with whose row it is.
    std::vector<TypedRow> typedRows() const { return m_entries.typedRows(); }
    /// Takes over what was typed into the same rows before. Gives what it cannot: rows that are not in the
    /// list, were changed since or are edited here.
    std::vector<TypedRow> retype(const std::vector<TypedRow> &rows);
    /// Rows stand as somebody else wrote them, and are to hold these values; rows that the list does not hold
    /// are passed over.
    void rebase(const std::vector<RowEdit> &rows);
    ReadRow seenRow(int record) const { return edits().seen(record); }
    void dropChanges();
    /// The edits have been written: they are what the rows hold now.
    void acceptChanges();
    /// The first changed record whose values cannot be saved, and why; −1 when all can.
    int firstWrong(QString *why) const;
    /// What of a record's edited dates may be a slip of the keys, a sentence each.
    QStringList doubts(int record) const;

    /// Shows only patients whose name and kana contain these texts; case, width and kana kind are ignored.
    void narrow(const QString &name, const QString &kana);
    /// Shows only the rows that are in a state now.
    void showState(RowState state);
    RowState shownState() const { return m_states.chosen(); }
    /// Of the rows that narrowing leaves.
    StateCounts stateCounts() const { return m_states.counts(m_kept); }
    /// Of them, how many have lapsed outside of the range.
    int lapsedOutside() const { return m_states.lapsedOutside(m_kept); }
    /// Rows of the range, and what the chosen state shows beside them.
    int countOfList() const;
    /// Prepares the texts that narrow() compares, so that the first key stroke need not.
    void prepareNarrowing();
    /// Ticks or clears a tick column on those of the records that may be edited.
    void tick(const std::vector<int> &records, ListColumn column, bool on);
    /// Whether all of them that may be edited are ticked.
    bool allTicked(const std::vector<int> &records, ListColumn column) const;

    /// @name Taking back what was done to rows since they were read or saved
    /// A tick that brought dates along is one step, and so are many ticks at once.
    ///@{
    UndoneStep undo();
    UndoneStep redo();
    /// Rows were written past the list: what was done before is not taken back past that.
    void forgetSteps() { m_entries.forgetSteps(); }
    /// The rows become what was read; 対象 stays. False when they are.
    bool restore(const std::vector<int> &records);
    ///@}

    /// @name The kinds of letters that are proposed for the rows, reckoned after the rows are shown
    ///@{
    /// The next records whose kinds are not known, at most so many; none when all are.
    std::vector<int> recordsWithoutLetter(size_t most) const;
    void setLetters(const std::vector<int> &records, const GivenConsents &consents);
    ///@}

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    /// By the column's own order; column −1 gives the order of the query back.
    void sort(int column, Qt::SortOrder order) override;

Q_SIGNALS:
    /// Rows were read anew.
    void loaded();
    /// Edits, ticks or the shown rows changed.
    void stateChanged();
    /// All kinds of letters are wanted now, to sort by them.
    void lettersWanted();
    /// A period could not be reckoned, and why.
    void troubled(const QString &why);
    /// A date was entered that may be a slip of the keys, and why.
    void doubted(const QString &why);

private:
    void take(Recordset rows, const ListContext &context);
    void show();
    void showAnew();
    void toldLoaded();
    const ListEdits &edits() const { return m_entries.edits(); }
    bool changed(const ListStep *step);
    UndoneStep told(const ListStep *step);
    const ListRow &looked(int record) const;
    void changedRow(int record);
    void changedAll();
    QString toolTip(int record, ListColumn column) const;

    ListContext m_context;
    ListRecords m_records;
    ListEntries m_entries{m_records, m_context, m_states};
    ListStates m_states{m_records, m_entries.edits()};
    std::vector<LetterKind> m_letters; ///< by record, of the first ones
    std::vector<bool> m_kept;          ///< by record: not narrowed away
    std::vector<int> m_shown;          ///< records, in the order shown
    std::vector<int> m_rows;           ///< by record: where it is shown; −1: narrowed away
    /// The row that was looked at last: a row is painted cell by cell.
    mutable std::optional<ListRow> m_looked;
    ListNarrowing m_narrowing;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};
