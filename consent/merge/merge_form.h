#pragma once

#include "consent/merge/merge_model.h"

#include <QDialog>

class Grid;
class Messages;
class QLabel;

/// Rows that somebody else wrote while they were typed over here, side by side: what was read, what they
/// wrote, what was typed. Accepted when every column is decided; what is not typed over is theirs.
class MergeForm : public QDialog {
public:
    /// What the decided rows are for, and what becomes of what was typed when the form is left.
    enum class Use {
        Save,    ///< the rows are saved at once; left, they stay as they were typed
        Take,    ///< the list takes them over, unsaved; left, what was typed goes
        Restore, ///< the same; left, what was typed is kept for the next start
    };
    /// @param rows at least one
    MergeForm(Messages &messages, std::vector<MergeRow> rows, Use use, QWidget *parent);

    /// As they were decided.
    const std::vector<MergeRow> &rows() const { return m_rows; }

    void accept() override;
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();
    void addWays(QLayout &line, const QString &caption, const QString &shift, bool all);
    void show(int row);
    void take(MergeRow::Way way, bool all);
    void turnOver();
    void goOn();
    void refresh();
    void showWhole();
    void copyTyped();

    Messages &m_messages;
    std::vector<MergeRow> m_rows;
    const Use m_use;
    MergeRowsModel m_rowsModel;
    MergeColumnsModel m_columnsModel;
    Grid *m_rowsGrid;
    QLabel *m_written; ///< whose row it is, and who wrote it last
    Grid *m_grid;
    QLabel *m_whole; ///< the texts of the column under the cursor, uncut
};

/// Lets the user decide about those of the rows that there is a need to look at. False when that was left.
bool decide(Messages &messages, std::vector<MergeRow> &rows, MergeForm::Use use, QWidget *parent);
