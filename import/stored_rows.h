#pragma once

#include "db/field_rows.h"
#include "db/tables/keys.h"
#include "import/import_kind.h"

#include "app/base/result.h"

#include <QHash>

class cT_ADODB;

/// The rows of a kind as they stand in the database: as texts by column, found by number and by name.
class StoredRows {
public:
    static Result<StoredRows> read(cT_ADODB &db, const ImportDescription &description, const Branch &branch);

    /// Of all that was read.
    size_t fingerprint(size_t seed) const;

    int count() const { return m_rows.rowCount(); }
    QString code(int row) const { return m_rows.text(row, 0).trimmed(); }
    /// Of several columns, joined by +, their texts one after the other. Dates as yyyy/mm/dd; Null and
    /// columns that are not read give an empty text.
    QString value(int row, const QString &columns) const;
    /// Of a patient: whether RIYOUSHA_SUB has a row.
    bool inSub(int row) const;

    /// −1 when there is none.
    int ofCode(const QString &code) const { return m_byCode.value(code, -1); }
    /// Those with a name, as comparedName() gives it.
    QList<int> named(const QString &comparedName) const { return m_byName.value(comparedName); }

private:
    QString valueOf(int row, const QString &column) const;

    QString m_codeColumn;
    Recordset m_rows;
    QHash<QString, int> m_positions; ///< of the columns
    QHash<QString, bool> m_isDate;
    QHash<QString, int> m_byCode;
    QHash<QString, QList<int>> m_byName;
};
