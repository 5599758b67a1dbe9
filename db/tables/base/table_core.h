#pragma once

#include "db/tables/base/table_text.h"

#include <QString>
#include <QStringList>
#include <functional>

class Recordset;
class cT_ADODB;

/// What the table classes share that does not depend on the record: connection, error text, running of
/// statements. Operations give 0, or −1 with the reason in sErrMsg.
class TableCore {
public:
    TableCore(const TableCore &) = delete;
    TableCore &operator=(const TableCore &) = delete;

    /// The reason of the last failure.
    const QString &sErrMsg() const { return m_error; }

    /// Keeps the connection for all later calls; it must outlive the table object.
    short iInit(cT_ADODB &db);

    /// On failure, which includes a missing iInit, the name is empty.
    short iGetComputerName(QString &name);

    /// Rows that the last writing operation changed: 0 when a row to update was no longer there.
    qint64 affectedRows() const { return m_affected; }

protected:
    enum class Writing { Insert, Update, Delete };

    explicit TableCore(TableText text) : m_text(std::move(text)) {}
    ~TableCore() = default;

    const TableText &text() const { return m_text; }
    /// One SQL literal a column. Rows are found by their key columns; a table that finds them otherwise, or
    /// is written with more than its records hold, says so here.
    virtual QString writingSql(Writing writing, const QStringList &literals) const;

    /// Keeps the reason and gives −1.
    short fail(const QString &reason);
    /// "<TABLE>が無効です。", for a record that is not there.
    short failInvalid();

    short open(Recordset &rows, const QString &sql);
    /// The number that a SELECT of a maximum gives, 0 when there is none.
    template <class Number> short readMax(Number &result, const QString &sql) {
        qint64 number = 0;
        const short status = readNumber(number, sql);
        if (status == 0)
            result = static_cast<Number>(number);
        return status;
    }
    /// Whether a SELECT gives any row.
    short readExists(bool &exists, const QString &sql);

    /// Writes a row of the table. `afterwards` runs inside the transaction, when `transaction` asks for one;
    /// its failure rolls back too.
    short write(Writing writing, const QStringList &literals, bool transaction,
                const std::function<short()> &afterwards);

    /// Columns of another table's rows that repeat columns of this one.
    struct Copy {
        QList<std::pair<QString, QString>> assignments; ///< column, literal
        QString where;                                  ///< without its WHERE
    };
    /// Writes them and the audit columns there, in the caller's transaction.
    short copyTo(QStringView table, const QList<Copy> &copies);

private:
    short readNumber(qint64 &result, const QString &sql);
    short failDatabase();
    short takeComputerName(QString &name);
    short execute(const QString &sql, bool transaction, const std::function<short()> &afterwards);

    TableText m_text;
    cT_ADODB *m_db = nullptr;
    QString m_error;
    qint64 m_affected = 0;
};
