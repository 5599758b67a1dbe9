#pragma once

#include "consent/list/list.h"
#include "consent/rules/list_advisor.h"
#include "consent/screens/filter_follow.h"
#include "consent/screens/list_recovery.h"

class ListCommandBar;
class ListFilterPanel;
class ListGrid;
class PaintedListModel;
class QProgressBar;
class QWidget;
class StateBar;
struct ListCommand;
struct ListLink;

/// The controls of the list's window that its work reads and fills.
struct ListWindow {
    QWidget *window; ///< parent of what is asked
    PaintedListModel *model;
    ListFilterPanel *panel;
    ListGrid *grid;
    StateBar *states;
    ListCommandBar *commands;
    QProgressBar *progress;
};

/// The list's everyday work: its rows follow the filter's controls, its edits reach the database. Asks and
/// tells the user what that takes. Every member that gives a bool gives false when nothing was done; the user
/// knows why then.
class ListWork {
public:
    /// The arguments must outlive the work.
    ListWork(Environment &environment, cT_ADODB &db, const ListWindow &window);

    /// Reads the settings and the first rows. False with sErrMsg().
    bool begin();
    const QString &sErrMsg() const { return m_list.sErrMsg(); }
    const ListFilter &readFilter() const { return m_list.readFilter(); }

    /// @name Rows
    ///@{
    void searchAsked() { search(); }
    void clearFilter();
    void showRange(QuickRange range);
    void showState(RowState state);
    FilterFollow &follow() { return m_follow; }
    /// Before a command on all rows: those that the filter asks for are read if others are shown.
    bool rowsAreCurrent() { return !m_follow.isBehind() || search(); }
    /// Keeps range and state for this user's next run.
    Result<> keepChoices() const;
    /// Shows a patient whose period may end outside the range.
    void jumpTo(qint32 patient);
    void chooseOrder();
    void chooseStaff();
    /// Reads the rows again and keeps the edits.
    void reread();
    /// The same after rows were written past the list.
    void rereadWritten();
    ///@}

    /// @name Edits
    ///@{
    /// Offers what earlier runs left unsaved.
    void restore();
    void saveAsked();
    /// Whether the rows may be replaced or left: unsaved edits are saved or dropped as the user says.
    bool maySwitch();
    void renew();
    void undo();
    void redo();
    /// The chosen rows, else the current one, become what was read.
    void restoreRows();
    void tickAllTargets() { tickAll(ListColumn::Target); }
    void tickAllReceived() { tickAll(ListColumn::Received); }
    ///@}

    /// @name The letters' kinds, reckoned while the user looks at the rows
    ///@{
    /// The next few. False when none are left, or they cannot be read.
    bool readSomeLetters();
    bool readAllLetters();
    ///@}

    /// @param where the operation that a failure names
    void readMethods(const QString &where);
    void toggleLink(const ListCommand &command, const ListLink &link);

    /// Rows shown, ticked 対象 and ticked 受領, in words.
    QString countsText() const;
    /// "対象期間外の期限切れ 9 件"; empty when there are none, or they are shown.
    QString lapsedText() const;
    /// Tells that the database refused.
    void failDb(const QString &reason);

private:
    bool search();
    bool searchFor(const ListFilter &filter);
    bool show(const ListFilter &filter);
    void readOrder(ListFilter &filter) const;
    void restoreChoices();
    bool save(QString *done = nullptr);
    bool told(const SaveOutcome &outcome);
    void showRowsOf(const UnsavedRows &unsaved);
    bool meansDates();
    void readLinks();
    void tickAll(ListColumn column);
    void sayUndone(const UndoneStep &step, const QString &done, const QString &nothing);
    void takeDropped(const std::vector<TypedRow> &rows);
    void showRow(int record, ListColumn column);

    Environment &m_environment;
    cT_ADODB &m_db;
    QWidget *m_window;
    PaintedListModel *m_model;
    ListFilterPanel *m_panel;
    ListGrid *m_grid;
    ListCommandBar *m_commands;
    QProgressBar *m_progress;
    ListAdvisor m_advisor;
    ConsentList m_list;
    FilterFollow m_follow;
    ListRecovery m_recovery;
};
