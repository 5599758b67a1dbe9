#pragma once

#include "consent/record/grid_save.h"

#include <QString>

/// A row whose values differ from what was read.
struct ChangedRow : RowEdit {
    int record;
};

/// Whether nobody has written a row since it was read. A row that was saved and not read again since has no
/// update time; its values decide.
bool isSameRow(const ReadRow &now, const ReadRow &before);

/// What the user had typed into a row, in brackets, so that it need not be looked up on paper again; empty
/// when only ticks were changed.
QString typedText(const ChangedRow &row);

/// A row's key as one text, for finding it again after the list was read anew.
QString rowIdentity(const ConsentRowKey &key);
