#pragma once

#include "db/adodb.h"

#include <QMap>
#include <QString>
#include <QStringList>

/// The rows of the tables that the history follows, read as whole tables, and what the log makes of earlier
/// ones: log and rows agree when both are the same.
class ReplayedLog {
public:
    using Row = QMap<QString, QString>; ///< column to text, Null as "NULL"
    using Rows = QMap<QString, Row>;    ///< by table and key

    /// Takes the rows as they stand; the log before is history.
    explicit ReplayedLog(cT_ADODB &db);

    /// What does not agree, by now; empty when the records since then, applied one after the other to the
    /// rows of then, give the rows of now, and each record tells a change.
    QString disagreement();
    /// The operations of these records, in their order, each once in a row.
    const QStringList &operations() const { return m_operations; }

private:
    Recordset read(const QString &sql);
    Rows rowsOfNow();
    QString apply(Rows &rows, const Recordset &log, int record);

    cT_ADODB &m_db;
    Rows m_then;
    int m_before = 0; ///< records
    QStringList m_operations;
};
