#pragma once

#include "app/base/result.h"
#include "consent/list/list_model.h"
#include "consent/rows/column_settings.h"
#include "widgets/grid.h"

#include <functional>

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

/// The consent list's grid: columns by caption, the editors of its cells and the tick pictures.
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

Q_SIGNALS:
    /// The button of the current row was pressed.
    void buttonPressed();
    /// Text that is no date was left in a cell.
    void rejected(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;

protected Q_SLOTS:
    /// Enter goes on to the row below: answers are entered down a column.
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void arrange(const ColumnSettings &settings);
    int pixels(int characters) const;
    int practiceWidth(ListColumn column) const;
    bool press(const QModelIndex &index);
    int rowOf(const ConsentRowKey &key, int otherwise) const;

    PaintedListModel *m_model = nullptr;
    RequestMethods m_methods;
    ColumnSettings m_practice;
};
