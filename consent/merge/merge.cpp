#include "consent/merge/merge.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

QString MergeColumn::result() const {
    return taken == Undecided ? QString() : taken == Typed ? typed : theirs;
}

void MergeRow::take(Way way) {
    for (MergeColumn &column : columns) {
        if (way == Theirs || !column.isTyped || !gone.isEmpty())
            column.taken = MergeColumn::Theirs;
        else
            column.taken = way == Both && column.isWritten ? MergeColumn::Undecided : MergeColumn::Typed;
    }
}

void MergeRow::leave(const QString &why) {
    gone = why;
    take(Theirs);
}

void MergeRow::turnOver(size_t column) {
    MergeColumn &turned = columns[column];
    if (turned.isTyped && gone.isEmpty())
        turned.taken = turned.taken == MergeColumn::Typed ? MergeColumn::Theirs : MergeColumn::Typed;
}

bool MergeRow::isDecided() const {
    return std::ranges::find(columns, MergeColumn::Undecided, &MergeColumn::taken) == columns.end();
}

bool MergeRow::collides() const {
    return std::ranges::any_of(columns, &MergeColumn::collides);
}

bool MergeRow::needsLook() const {
    return !gone.isEmpty() || (std::ranges::any_of(columns, &MergeColumn::isWritten) &&
                               std::ranges::any_of(columns, &MergeColumn::isTyped));
}

QString MergeRow::typedText() const {
    QStringList typed;
    for (const MergeColumn &column : columns)
        if (column.isTyped)
            typed.append(column.caption + u' ' + column.typed);
    return who + u'　' + typed.join(u'、');
}
