#pragma once

#include "export/grid_table.h"

#include <QPushButton>

class Grid;
class QBoxLayout;
struct Environment;

/// What a grid shows: its shown columns in their order on the screen, its shown rows.
GridTable tableOf(const Grid &grid);

/// Asks where and how, and saves the table as a file; tells what came of it. Where the file cannot be
/// written, the user is asked again.
/// @param name what the proposed file name begins with, today's date follows
/// @return whether the file was written
bool saveTable(const Environment &environment, const GridTable &table, const QString &name, QWidget *parent);

/// 「CSV出力」 for a form's grid, by Ctrl+Shift+S: a form puts it among its buttons, and that is all.
///
///     (new CsvButton(environment, *m_ui->ssList, u"同意依頼"_s))->insert(*m_ui->rowButtons, *m_ui->cmdEnd);
class CsvButton : public QPushButton {
public:
    /// The arguments must outlive the button.
    CsvButton(const Environment &environment, Grid &grid, const QString &name);

    /// Puts it before another button, in the row and in the order of Tab.
    void insert(QBoxLayout &row, QWidget &before);
};
