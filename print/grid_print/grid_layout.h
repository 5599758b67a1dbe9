#pragma once

#include "export/grid_table.h"
#include "print/engine/data_file.h"

/// A grid as it goes onto paper.
struct GridDocument {
    QString title;
    QStringList notes; ///< what the rows are a list of; a line each, on every sheet
    GridTable table;
    std::vector<int> keys; ///< columns by which a row is known: they head each further band
};

/// Columns that stand beside one another on a sheet.
struct GridBand {
    std::vector<int> columns;
    std::vector<double> widths; ///< mm, the sheet's width together
};

/// How a table lies on A4 landscape: in one band in the largest size that holds all columns, else in bands of
/// a readable size, to be laid side by side.
struct GridPlan {
    double size = 0; ///< points
    std::vector<GridBand> bands;
};

GridPlan planGrid(const GridDocument &document);

/// The layout that prints it, for the data below.
QByteArray gridLayout(const GridDocument &document, const GridPlan &plan);

/// 一覧データ: its name for the engine.
QString gridDataName();
/// The rows of one band after the other.
DataFile gridData(const GridTable &table, const GridPlan &plan);
