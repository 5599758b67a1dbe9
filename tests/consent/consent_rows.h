#pragma once

#include "db/tables/keys.h"
#include "tests/support/test_database.h"

#include <QMap>
#include <QString>
#include <QStringList>

/// Consent rows in a test's database, written and read past the code under test.
class ConsentRows {
public:
    using Row = QMap<QString, QString>; ///< column to value as text, Null as "NULL"

    explicit ConsentRows(const TestDatabase &database);

    /// Inserts a row whose every column holds a value of its own, but for the given literals.
    void insert(const ConsentRowKey &key, const QMap<QString, QString> &literals = {}) const;

    /// A row with every column; empty when there is none.
    Row read(const ConsentRowKey &key) const;
    /// All rows of the table as text, in key order.
    QStringList all() const;
    /// "nDate/iHenkeiFlg/nHenkeiDouiDate" of the rows that are marked newest, in that order.
    QStringList newest(const PatientKey &patient) const;

private:
    const TestDatabase &m_database;
    QList<SuiteColumn> m_columns;
};

/// Literals of an answer, on a massage or a deformity-correction row.
QMap<QString, QString> answered(const QString &date, const QString &start, const QString &end,
                                bool deformity = false);
