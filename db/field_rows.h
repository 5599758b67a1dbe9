#pragma once

#include "db/recordset.h"

#include <numeric>
#include <utility>
#include <vector>

/// The rows of one SELECT read by meaning: `Field` is an enumeration of its columns. Positions are resolved
/// once a recordset. Records count from 0; a column that the SELECT lacks reads as Null, and Null as an empty
/// text, 0 and an invalid date.
template <class Field> class FieldRows {
public:
    FieldRows() = default;
    /// The select list stands in the order of the enumeration.
    explicit FieldRows(Recordset rows) : m_rows(std::move(rows)), m_positions(size_t(m_rows.columnCount())) {
        std::iota(m_positions.begin(), m_positions.end(), 0);
    }
    /// @param names the column of each field, in the order of the enumeration
    template <class Names> FieldRows(Recordset rows, const Names &names) : m_rows(std::move(rows)) {
        m_positions.reserve(std::size(names));
        for (const auto &name : names)
            m_positions.push_back(m_rows.column(name));
    }

    int count() const { return m_rows.rowCount(); }

    bool isNull(int record, Field field) const {
        const int position = at(field);
        return position < 0 || m_rows.isNull(record, position);
    }
    QString text(int record, Field field) const {
        const int position = at(field);
        return position < 0 ? QString() : m_rows.text(record, position);
    }
    qint64 number(int record, Field field) const {
        const int position = at(field);
        return position < 0 ? 0 : m_rows.number(record, position);
    }
    bool flag(int record, Field field) const { return number(record, field) != 0; }
    QDate date(int record, Field field) const {
        const int position = at(field);
        return position < 0 ? QDate() : m_rows.date(record, position);
    }

private:
    int at(Field field) const { return m_positions[size_t(field)]; }

    Recordset m_rows;
    std::vector<int> m_positions; ///< −1 where the SELECT lacks the column
};
