#pragma once

#include "tests/support/test_database.h"

#include <gtest/gtest.h>

/// A database of the test's own, on whichever engine the run is about.
class AnyDatabase : public testing::Test {
protected:
    void run(const QString &sql) {
        EXPECT_EQ(database.db.iExecSQL(sql), 0) << sql.toStdString() << database.db.sErrMsg().toStdString();
    }

    /// The cells of a query in the order of reading, joined by blanks, Null as "NULL"; or its errors.
    QString cells(const QString &sql) {
        const ErrorsSince errors(database.db);
        Recordset rows;
        if (database.db.iOpenRecSet(rows, sql) != 0)
            return errors.text();
        QStringList cells;
        for (int row = 0; row < rows.rowCount(); ++row)
            for (int column = 0; column < rows.columnCount(); ++column)
                cells += rows.isNull(row, column) ? QStringLiteral("NULL") : rows.text(row, column);
        return cells.join(u' ');
    }

    TestDatabase database;
};
