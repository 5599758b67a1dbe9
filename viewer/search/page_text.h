#pragma once

#include "viewer/document/document.h"

#include <QList>
#include <QString>

/// What a page's text runs say and where, for search and copying. Areas are millimetres from the paper's
/// corner.

/// The area of some characters of a run; half-width characters count half as wide.
QRectF partOfRun(const TextRun &run, qsizetype from, qsizetype length);

/// Where a text stands in the runs, which are looked at one by one; case, width and kana kind are ignored.
/// @param folded as foldForSearch gives it, not empty
QList<QRectF> findText(const std::vector<TextRun> &runs, const QString &folded);

/// The characters whose middle lies in an area.
struct TextSelection {
    QList<QRectF> areas;
    QString text; ///< line by line, a tab between runs of one line
};
TextSelection selectText(const std::vector<TextRun> &runs, const QRectF &area);
