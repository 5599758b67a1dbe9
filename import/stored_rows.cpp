#include "import/stored_rows.h"

#include "app/base/dates.h"
#include "app/base/text.h"
#include "db/adodb.h"
#include "import/import_query.h"
#include "import/import_values.h"

Result<StoredRows> StoredRows::read(cT_ADODB &db, const ImportDescription &description,
                                    const Branch &branch) {
    Result<Recordset> read = readRows(db, storedRowsSql(description, branch));
    if (!read)
        return Failure{read.reason().trimmed()};
    StoredRows stored;
    stored.m_rows = std::move(*read);
    stored.m_codeColumn = description.codeColumn;
    int position = 1;
    for (const QString &column : storedColumns(description))
        stored.m_positions.insert(column, position++);
    for (const ImportField &field : description.fields)
        stored.m_isDate.insert(field.column, field.kind == ImportField::Date);
    const QString name = description.nameColumn();
    for (int row = 0; row < stored.count(); ++row) {
        stored.m_byCode.insert(stored.code(row), row);
        stored.m_byName[comparedName(stored.value(row, name))].append(row);
    }
    return stored;
}

size_t StoredRows::fingerprint(size_t seed) const {
    for (int row = 0; row < m_rows.rowCount(); ++row)
        for (int column = 0; column < m_rows.columnCount(); ++column)
            seed = qHashMulti(seed, m_rows.isNull(row, column), m_rows.text(row, column));
    return seed;
}

QString StoredRows::value(int row, const QString &columns) const {
    if (!columns.contains(u'+'))
        return valueOf(row, columns);
    QString whole;
    for (const QString &column : columns.split(u'+'))
        whole += valueOf(row, column);
    return whole;
}

QString StoredRows::valueOf(int row, const QString &column) const {
    if (column == m_codeColumn)
        return code(row);
    const int position = m_positions.value(column, -1);
    if (position < 0)
        return {};
    return m_isDate.value(column) ? dateText(m_rows.date(row, position))
                                  : trimRight(m_rows.text(row, position));
}

bool StoredRows::inSub(int row) const {
    return !m_rows.isNull(row, m_rows.columnCount() - 1);
}
