#pragma once

#include "app/base/result.h"
#include "widgets/code_lookup.h"
#include "widgets/pick_list_model.h"

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>

class Grid;
class Messages;
class QBoxLayout;
class QLabel;
class QLineEdit;
namespace Ui {
class PickListForm;
}

/// Shows a row to be edited, or without a code a new one; gives the code of what was saved.
using EditRow = std::function<std::optional<QString>(const QString &code, QWidget *parent)>;

/// The form behind every selection button: conditions of the search above, a box that narrows while one
/// types, and the rows, the best hit first. Enter or a double click takes the current row (a typed number
/// that is no row's code leads into the table first), Esc leaves, Down goes on in the table, letters typed in
/// the table go back to the box. An empty table says why. A search derives from it and tells what to read.
class PickListForm : public QDialog {
    Q_OBJECT

public:
    explicit PickListForm(Messages &messages, QWidget *parent = nullptr);
    ~PickListForm() override;

    /// Why iInit failed.
    const QString &CsErrStr() const { return m_error; }

    /// Reads the first list. 0, or −1 with CsErrStr.
    virtual short iInit();

    /// Takes the current row and closes; says so when there is none.
    void vWhenSeledOK();

    /// Hands over what was taken; an empty code when the form was left.
    void vGetSeledInf(CodeName &seled) const { seled = m_seled; }
    /// The taken row's whole record; −1 when the form was left.
    int seledRow() const { return m_seledRow; }
    const Recordset &rows() const { return m_model.rows(); }

    /// Column widths, order and sort, for the next form of the same search.
    QByteArray layoutState() const;
    void restoreLayout(const QByteArray &state);

protected:
    void setColumns(const QList<PickListColumn> &columns, const QString &codeField,
                    const QString &nameField) {
        m_model.setColumns(columns, codeField, nameField);
    }
    /// Where a search lays out its conditions; unused, it takes no room.
    QWidget *conditions() const;

    /// Reads the rows under the present conditions, or says why that failed.
    virtual Result<Recordset> readList() = 0;
    /// Said in the table when the conditions leave no row.
    virtual QString emptyText() const = 0;
    /// The conditions in words, shown below the table.
    virtual QString summary() const { return {}; }

    /// Adds 新規 (F1) and 修正 (F2), where there is an editor.
    void offerEditing(const EditRow &edit);

    /// Reads the list again after a condition changed; a failure is said.
    /// @return whether there are rows
    bool refresh();

    /// Code of the current row; empty when there is none.
    QString currentCode() const;
    /// Makes the row of a code current, dropping the narrowing that hides it.
    /// @return false when the list has none
    bool goToCode(const QString &code);

    /// Reads the list again when the box is left with another text; Enter also goes into the table.
    /// @param changed whether the conditions differ from those of the rows shown
    void watchCondition(QLineEdit *box, const std::function<bool()> &changed);

    Grid &grid() const;
    QBoxLayout &buttonRow() const;
    QWidget &selectButton() const;

    short fail(const QString &reason);
    Messages &messages() const { return m_messages; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Result<> load();
    Result<Recordset> readGuarded();
    void enterTable();
    void edit(const QString &code);
    void editCurrent();
    void addButton(const QString &name, const QString &caption, const QString &key,
                   const std::function<void()> &work);
    void wire();
    void showCount();
    bool keyInBox(const QWidget *box, const QKeyEvent &key);
    bool keyInGrid(const QKeyEvent &key);

    std::unique_ptr<Ui::PickListForm> m_ui;
    Messages &m_messages;
    PickListModel m_model;
    QLabel *m_empty; ///< in the place of rows
    QString m_error;
    CodeName m_seled;
    int m_seledRow = -1;
    EditRow m_edit;
};
