#pragma once

#include "app/base/branch.h"

#include <QString>
#include <optional>

/// The highest number of a run. Numbers that somebody entered by hand far beyond are left out.
QString sqlHighestBatch();
QString sqlBeginBatch(qint32 number, const QString &computer, const Branch &branch, const QString &kind,
                      std::optional<qint32> takesBack);
QString sqlFinishBatch(qint32 number, qint64 rows, qint64 documents, qint64 pages);
QString sqlAddDocument(qint32 batch, int place, const QString &title, qint64 pages, const QString &content);
