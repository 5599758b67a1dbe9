#pragma once

#include <QString>
#include <QStringList>
#include <span>
#include <vector>

class QAbstractItemModel;

/// A grid's content as texts, for files and for paper.
struct GridTable {
    struct Column {
        QString heading;
        bool right = false; ///< set at the right, as numbers are
    };

    std::vector<Column> columns;
    std::vector<QStringList> rows; ///< a text for each column

    QStringList headings() const;
};

/// The model's role for a cell whose text on the screen is none on paper, such as a button's caption.
inline constexpr int fileTextRole = 0x0100 + 1000;

/// Reads a model's rows in the order shown.
/// @param columns the model's columns that are wanted, in their order. A ticked cell reads ○, an unticked one
/// is empty.
GridTable readTable(const QAbstractItemModel &model, std::span<const int> columns);
