#pragma once

#include "import/import_kind.h"

/// What a cell says for its field.
struct CellReading {
    QString value; ///< as the column takes it: a date yyyy/mm/dd, a choice's number; a reference's is still
                   ///< as typed
    QString fault = {}; ///< why it cannot be taken
    QString note = {};  ///< worth knowing
};

/// Reads the text of a cell that is not empty.
/// @param serials the file's column holds numbers as spread-sheets count days, and nothing else
CellReading readCell(const ImportField &field, const QString &text, bool serials);

/// Whether a text can be a day as spread-sheets count them.
bool isDaySerial(const QString &text);

/// How a value of a field is shown.
QString shownValue(const ImportField &field, const QString &value);

/// A name with its reading in brackets behind it, as 山田花子（ヤマダハナコ）: the reading, the name without
/// it. A name that is all kana is its own reading. Nothing else is ever taken for one.
struct NameReading {
    QString name, kana;
};
NameReading readingIn(const QString &name);

/// A name as it is compared with others: without blanks, case, width, kana kind and variants of its
/// characters.
QString comparedName(const QString &name);
