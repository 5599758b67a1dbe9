#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <utility>
#include <vector>

/// How statements treat a column.
enum class ColumnUse {
    Value,      ///< read, inserted and updated
    Key,        ///< read, inserted; selects the row
    Joined,     ///< read through a join, never written
    PcName,     ///< audit: takes the computer name
    UpDateTime, ///< audit: takes the server's time
};

/// What statements need to know of a column.
struct ColumnText {
    QStringView name;
    ColumnUse use = ColumnUse::Value;
    QStringView source; ///< of a joined column, e.g. SISETSU.cShamei1

    bool isAudit() const { return use == ColumnUse::PcName || use == ColumnUse::UpDateTime; }
};

/// What statements need to know of a table. The views must outlive it.
struct TableText {
    QStringView name;
    std::vector<ColumnText> columns;
    QStringView joins; ///< follows the table's name after FROM, e.g. " LEFT JOIN SISETSU ON …"

    /// Whether a row read back may differ from the row written: it has joined or audit columns.
    bool hasDerivedColumns() const;
};

/// @name Statements
/// `literals` holds one SQL literal a column, in the columns' order; those of joined columns are not used.
///@{
/// Without condition and order, which the caller appends.
QString selectSql(const TableText &table);
QString maxSql(const TableText &table, QStringView column);
QString insertSql(const TableText &table, const QStringList &literals);
/// The literals with those of the audit columns: the computer that writes and the server's time.
QStringList withAudit(const TableText &table, QStringList literals, const QString &computer);
QString updateSql(const TableText &table, const QStringList &literals);
QString deleteSql(const TableText &table, const QStringList &literals);
/// `qualified`: with the table's name before each column, as reading through joins needs it.
QString keyConditions(const TableText &table, const QStringList &literals, bool qualified);
/// Update of some columns of any table; `where` comes without its WHERE.
QString copySql(QStringView table, const QList<std::pair<QString, QString>> &assignments,
                const QString &where);
///@}
