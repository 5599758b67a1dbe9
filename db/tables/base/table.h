#pragma once

#include "db/tables/base/field.h"
#include "db/tables/base/table_core.h"

#include <algorithm>
#include <array>
#include <span>
#include <variant>
#include <vector>

/// One column of record class R.
template <class R> struct TableColumn {
    QStringView name;
    Member<R> member;
    ColumnUse use = ColumnUse::Value;
    QStringView source = {}; ///< of a joined column, e.g. SISETSU.cShamei1
};

/// Columns given in several parts, in one array.
template <class R, size_t... sizes>
constexpr auto joinColumns(const std::array<TableColumn<R>, sizes> &...parts) {
    std::array<TableColumn<R>, (sizes + ...)> columns;
    auto end = columns.begin();
    ((end = std::copy(parts.begin(), parts.end(), end)), ...);
    return columns;
}

/// A table and its columns in the record's order. Every record class gives its own through R::table().
template <class R> struct TableDefinition {
    QStringView name;
    std::span<const TableColumn<R>> columns;
    QStringView joins = {}; ///< follows the table's name after FROM

    TableText text() const {
        TableText text{name, {}, joins};
        text.columns.reserve(columns.size());
        for (const TableColumn<R> &column : columns)
            text.columns.push_back({column.name, column.use, column.source});
        return text;
    }

    QStringList literals(const R &record) const {
        QStringList literals;
        literals.reserve(qsizetype(columns.size()));
        for (const TableColumn<R> &column : columns)
            literals.append(
                std::visit([&](auto member) { return sqlLiteral(record.*member); }, column.member));
        return literals;
    }

    R read(const Recordset &rows, int row) const {
        R record;
        int position = 0;
        for (const TableColumn<R> &column : columns) {
            std::visit([&](auto member) { readField(rows, row, position, record.*member); }, column.member);
            ++position;
        }
        return record;
    }
};

/// Reads rows of one table into an array of records, and writes single rows. The table classes derive from
/// it, add their own reads and name its accessor.
template <class R> class Table : public TableCore {
public:
    /// Number of records in the result array after the last read. A read that fails leaves the array.
    int nデータ数() const { return int(m_records.size()); }
    const std::vector<R> &records() const { return m_records; }

    /// Reads the row with the record's key; the array is empty when there is none.
    short iDataRead(const R *key) { return readByKey(key, {}); }

    /// @name Writing
    /// `position` is the record's place in the result array, −1 when it does not come from there; after a
    /// success the entry there equals the stored row (insert sets it, or adds it at the end; update
    /// replaces it, audit columns included; delete removes it). `transaction`: run in one of its own;
    /// without it the caller's transaction decides, and a caller that rolls back reads again.
    ///@{
    short iDataInsert(const R *record, int position, bool transaction) {
        return writeRow(Writing::Insert, record, position, transaction);
    }
    short iDataUpdate(const R *record, int position, bool transaction) {
        return writeRow(Writing::Update, record, position, transaction);
    }
    short iData削除(const R *record, int position, bool transaction) {
        return writeRow(Writing::Delete, record, position, transaction);
    }
    ///@}

protected:
    Table() : TableCore(R::table().text()) {}

    /// nullptr outside the array.
    const R *at(int position) const {
        return position >= 0 && position < nデータ数() ? &m_records[size_t(position)] : nullptr;
    }

    /// `tail` is the condition and the order, each with its leading blanks.
    short read(const QString &tail) {
        std::vector<R> records;
        if (readInto(records, tail) != 0)
            return -1;
        m_records = std::move(records);
        return 0;
    }

    /// `also` is a further condition, e.g. " and  iDelFlg = 0".
    short readByKey(const R *key, const QString &also) {
        return key ? read(keyTail(*key) + also) : failInvalid();
    }

private:
    QString keyTail(const R &record) const {
        return QStringLiteral(" where") + keyConditions(text(), R::table().literals(record), true);
    }

    short readInto(std::vector<R> &records, const QString &tail) {
        Recordset rows;
        if (open(rows, selectSql(text()) + tail) != 0)
            return -1;
        records.reserve(size_t(rows.rowCount()));
        for (int row = 0; row < rows.rowCount(); ++row)
            records.push_back(R::table().read(rows, row));
        return 0;
    }

    bool isEntry(Writing writing, int position) const {
        const int end = writing == Writing::Insert ? nデータ数() + 1 : nデータ数();
        return position >= 0 && position < end;
    }

    short writeRow(Writing writing, const R *record, int position, bool transaction) {
        if (!record)
            return failInvalid();
        const bool entry = isEntry(writing, position);
        std::vector<R> stored;
        std::function<short()> readBack;
        if (entry && text().hasDerivedColumns())
            readBack = [&] { return readInto(stored, keyTail(*record)); };
        else if (entry)
            stored.push_back(*record);
        if (write(writing, R::table().literals(*record), transaction, readBack) != 0)
            return -1;
        if (entry)
            keepTrue(writing, size_t(position), stored);
        return 0;
    }

    void keepTrue(Writing writing, size_t position, std::vector<R> &stored) {
        if (writing == Writing::Delete)
            m_records.erase(m_records.begin() + qsizetype(position));
        else if (affectedRows() == 0 || stored.empty())
            return;
        else if (position == m_records.size())
            m_records.push_back(std::move(stored.front()));
        else
            m_records[position] = std::move(stored.front());
    }

    std::vector<R> m_records;
};
