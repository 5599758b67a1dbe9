#pragma once

#include "app/base/result.h"
#include "consent/record/grid_save.h"

#include <QByteArray>
#include <QDateTime>

/// The list's edits as they are kept while they are unsaved.
struct UnsavedRows {
    QString database;   ///< where the rows lie, branch included
    QDateTime time;     ///< of the last edit
    bool ended = false; ///< the list showed patients whose treatment has ended too
    std::vector<TypedRow> rows;
};

/// As bytes and back. Fails on what nobody wrote so: another version, a row without its values.
QByteArray toBytes(const UnsavedRows &unsaved);
Result<UnsavedRows> unsavedRows(const QByteArray &bytes);
