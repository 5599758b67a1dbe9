#pragma once

#include "app/base/branch.h"

#include <QList>
#include <QString>
#include <optional>

/// A column of a row before and after. Null is a null text; all else is the text that the database gives.
struct CellChange {
    QString column;
    QString before;
    QString after;

    friend bool operator==(const CellChange &left, const CellChange &right) {
        const auto same = [](const QString &one, const QString &other) {
            return one == other && one.isNull() == other.isNull();
        };
        return left.column == right.column && same(left.before, right.before) &&
               same(left.after, right.after);
    }
};

enum class ChangeKind : short { New = 1, Changed = 2, Deleted = 3 };

/// A row that a transaction has changed. Of a new row all cells are null before, of a deleted one after;
/// cells that are Null on both sides are left out.
struct RowChange {
    QString table;
    std::optional<Branch> branch = {};  ///< where rows of the table are a branch's
    std::optional<qint32> patient = {}; ///< where they are a patient's
    QString key = {};                   ///< the rest of the row's key, its columns joined by "/"
    ChangeKind kind = ChangeKind::Changed;
    QList<CellChange> cells = {};
};

/// @name The form in which the log keeps cells: a JSON object, column: [before, after]
///@{
QString changesText(const QList<CellChange> &cells);
/// Nothing for what is no such text: rows of the log may have been written by hand.
std::optional<QList<CellChange>> changesOf(const QString &text);
///@}
