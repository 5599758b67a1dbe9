#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

class cT_ADODB;

/// One run that printed, mailed, renewed or took another one back.
struct BatchInfo {
    qint32 number = 0;
    QString time; ///< the server's, "yyyy/mm/dd hh:mm:ss"
    QString computer;
    QString kind; ///< its operation, in the user's words
    qint32 rows = 0;
    qint32 documents = 0;
    qint32 pages = 0;
    std::optional<qint32> takesBack = {};   ///< the run that it took back
    std::optional<qint32> takenBackBy = {}; ///< the last run that took this one back, and holds
    bool partly = false;                    ///< that one took back only some of the rows
};

/// Whether runs are kept: a failure says why they are not and what to do.
Result<> batchesAreKept(cT_ADODB &db);

/// An office's runs of some days, the last one first. A run that was to take another back and changed nothing
/// is none.
Result<std::vector<BatchInfo>> readBatches(cT_ADODB &db, const Branch &branch, const QDate &from,
                                           const QDate &to);
/// Nothing where there is none of the number.
Result<std::optional<BatchInfo>> readBatch(cT_ADODB &db, const Branch &branch, qint32 number);
/// The last run of a computer on a day that changed rows and can be taken back.
Result<std::optional<BatchInfo>> readLastBatch(cT_ADODB &db, const Branch &branch, const QString &computer,
                                               const QDate &day);

/// "10:32", with the day before it where that is not today.
QString shortTime(const QString &time, const QDate &today);
/// "処理番号12 同意更新（10:32、35件）".
QString batchText(const BatchInfo &batch, const QDate &today);
