#pragma once

#include "db/tables/keys.h"
#include "history/changes.h"

#include <QMap>
#include <QString>
#include <optional>
#include <vector>

/// One record of the log, as it stands there.
struct BatchRecord {
    QString table;
    PatientKey patient;
    QString key;
    ChangeKind kind = ChangeKind::Changed;
    std::optional<QList<CellChange>> cells; ///< nothing where they cannot be read
    QString time = {};                      ///< as the database gives it
};

/// What stood in a column before and what was left there; a null text is Null.
struct WrittenValue {
    QString before, after;
};

/// What a batch made of one row, over all that it did to it.
struct WrittenRow {
    QString table;
    PatientKey patient;
    QString key;
    std::optional<ConsentRowKey> consent; ///< of a row of RIYOUSHA_DOUI_REC whose record can be read
    bool wasThere = false;
    bool isThere = false;
    QMap<QString, WrittenValue> values = {}; ///< by column
    QString time = {};                       ///< of the last record
    QString standing = {};                   ///< update time that the row bears now, empty: none

    QString identity() const;
    bool cameOrWent() const { return wasThere != isThere; }
};

/// A row's name among those of all tables.
QString identityOf(const QString &table, const PatientKey &patient, const QString &key);

/// The same text, and both Null or neither.
inline bool isSameValue(const QString &left, const QString &right) {
    return left == right && left.isNull() == right.isNull();
}

/// The rows of a batch's records, in the order in which the batch first came to them. What it undid itself is
/// left out.
/// @param records oldest first
std::vector<WrittenRow> writtenRows(const std::vector<BatchRecord> &records);
