#pragma once

#include "app/base/result.h"
#include "consent/list/list_model.h"
#include "consent/rows/column_settings.h"
#include "widgets/grid.h"

#include <functional>
#include <optional>

class Clock;
class DateDelegate;
class Folders;

/// The list's model with the look of its rows: urgent rows coloured with their end in bold, edited cells
/// tinted.
class PaintedListModel : public ConsentListModel {
    Q_OBJECT
public:
    using ConsentListModel::ConsentListModel;
    void setPalette(const QPalette &palette);
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QColor m_soon;
    QColor m_ended;
    QColor m_edited;
};

/// The consent list's grid: columns by caption, the editors of its cells and the tick pictures. Tab goes
/// through the cells that can be edited and Ctrl+Tab out; Enter opens the cell; rows are chosen by Shift with
/// the arrows, Shift+Space and Ctrl+A, and Space ticks all that are chosen.
class ListGrid : public Grid {
    Q_OBJECT
public:
    ListGrid(const Folders &folders, const Clock &clock, QWidget *parent = nullptr);

    /// Takes the model and shows the columns as at first.
    void attach(PaintedListModel *model);
    void setMethods(const RequestMethods &methods);
    /// Shows the columns as the practice wants them, in the widths that this user has given them; in the
    /// user's order too, until the practice's changes. The rows stay in the order of the query.
    void showColumns(const ColumnSettings &practice);
    /// The columns as they stand.
    ColumnSettings columns() const;
    /// Keeps what the user has changed of them for the next run.
    Result<> keepColumns() const;
    /// Forgets what was kept.
    void forgetColumns();

    /// Does work that may read the rows anew or narrow them. The cell that was current stays current, at its
    /// height in the window, wherever its row went.
    void keepPlace(const std::function<void()> &work);
    /// Narrows the rows; the cursor goes to the first, or back to its own row when all are shown again.
    void narrow(const QString &name, const QString &kana);
    /// Goes to the first row, in the column where the cursor is.
    void goToFirst();
    /// Goes to a record; where it is narrowed away nothing moves.
    void goToRecord(int record);
    /// Sorts by the column where the cursor is; once more reverses, and then the query's order is back.
    void sortByCurrentColumn();
    /// Records of the rows that are chosen, without any of the one where the cursor is.
    std::vector<int> chosenRecords() const;

Q_SIGNALS:
    /// The button of the current row was pressed.
    void buttonPressed();
    /// Text that is no date was left in a cell.
    void rejected(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

protected Q_SLOTS:
    /// Enter goes on to the row below: answers are entered down a column.
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void arrange(const ColumnSettings &settings);
    int pixels(int characters) const;
    int practiceWidth(ListColumn column) const;
    bool press(const QModelIndex &index);
    bool chooseRows(const QKeyEvent &event);
    void chooseUpTo(int row);
    bool tick(bool anyColumn);
    bool enter();
    void empty(const QModelIndex &index);
    QModelIndex nextToEdit(int step) const;
    int rowOf(const ConsentRowKey &key, int otherwise) const;

    PaintedListModel *m_model = nullptr;
    int m_chosenFrom = 0; ///< row where choosing began
    RequestMethods m_methods;
    ColumnSettings m_practice;
};
