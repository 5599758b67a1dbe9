#pragma once

#include "db/sqlite/sqlite_provider.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// An embedded database of the test's own, empty, behind its provider.
class EmbeddedDatabase : public testing::Test {
protected:
    EmbeddedDatabase() {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)); // an empty file is an empty database
        file.close();
        EXPECT_TRUE(db.open(connectionString())) << errors();
    }

    QString path() const { return m_folder.filePath(QStringLiteral("suite.db")); }
    QString connectionString(int busyMilliseconds = 100) const {
        return QStringLiteral("Provider=SQLite;Data Source=%1;Busy Timeout=%2")
            .arg(path())
            .arg(busyMilliseconds);
    }

    void run(const QString &sql) {
        EXPECT_TRUE(db.execute(sql, nullptr)) << sql.toStdString() << '\n' << errors();
    }

    /// The cells of a query in the order of reading, joined by blanks, Null as "NULL"; or its errors.
    QString cells(const QString &sql) {
        Recordset rows;
        if (!db.query(sql, rows))
            return QString::fromStdString(errors());
        QStringList cells;
        for (int row = 0; row < rows.rowCount(); ++row)
            for (int column = 0; column < rows.columnCount(); ++column)
                cells += rows.isNull(row, column) ? QStringLiteral("NULL") : rows.text(row, column);
        return cells.join(u' ');
    }

    /// Descriptions of the provider's errors, which are cleared.
    std::string errors() {
        QStringList texts;
        for (const ProviderError &error : db.errors())
            texts += error.sqlState + u' ' + error.description;
        db.clearErrors();
        return texts.join(u'\n').toStdString();
    }

private:
    QTemporaryDir m_folder;

protected:
    SqliteProvider db;
};
