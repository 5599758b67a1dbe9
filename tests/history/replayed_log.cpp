#include "tests/history/replayed_log.h"

#include "db/tables/schema.h"
#include "tests/support/test_database.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList tables{
    u"RIYOUSHA_DOUI_REC"_s, u"RIYOUSHA"_s, u"RIYOUSHA_SUB"_s, u"DOUIKIROKU"_s, u"DOCTOR"_s,
    u"SISETSU"_s,           u"CAREMANE"_s, u"SOUDAN"_s,       u"STAFF"_s,      u"CORP_SUB"_s};

QStringList keyOf(const QString &table) {
    for (const QString &statement : schemaStatements())
        if (const auto key =
                QRegularExpression(u"PK_%1 PRIMARY KEY \\(([^)]*)\\)"_s.arg(table)).match(statement);
            key.hasMatch())
            return key.captured(1).split(u", "_s);
    return {};
}

QString textOf(const QJsonValue &value) {
    return value.isNull() ? u"NULL"_s : value.toString();
}

} // namespace

ReplayedLog::ReplayedLog(cT_ADODB &db) : m_db(db) {
    m_then = rowsOfNow();
    m_before = int(read(u"SELECT COUNT(*) FROM DOUISHO_LOG"_s).number(0, 0));
}

Recordset ReplayedLog::read(const QString &sql) {
    const Result<Recordset> rows = readRows(m_db, sql);
    EXPECT_TRUE(rows) << rows.reason().toStdString();
    return rows ? *rows : Recordset();
}

ReplayedLog::Rows ReplayedLog::rowsOfNow() {
    Rows all;
    for (const QString &table : tables) {
        QStringList columns;
        for (const SuiteColumn &column : suiteColumns(table))
            if (column.name != u"CONSTRAINT")
                columns += column.name;
        const Recordset rows = read(u"SELECT %1 FROM %2"_s.arg(columns.join(u", "_s), table));
        const QStringList key = keyOf(table);
        for (int row = 0; row < rows.rowCount(); ++row) {
            Row cells;
            for (int column = 0; column < columns.size(); ++column)
                cells.insert(columns[column], rows.isNull(row, column) ? u"NULL"_s : rows.text(row, column));
            QStringList id{table};
            for (const QString &column : key)
                id += cells.value(column);
            all.insert(id.join(u'/'), cells);
        }
    }
    return all;
}

QString ReplayedLog::apply(Rows &rows, const Recordset &log, int record) {
    QStringList key;
    for (int column = 0; column < 5; ++column)
        if (const QString part = log.text(record, column); !log.isNull(record, column) && !part.isEmpty())
            key += part;
    const QString id = key.join(u'/');
    const qint64 kind = log.number(record, 5);
    const QString what = id + u' ' + log.text(record, 6);
    if (rows.contains(id) != (kind != 1))
        return u"a record of a row that is, or is not there: "_s + what;
    Row &row = rows[id];
    const QJsonObject cells = QJsonDocument::fromJson(log.text(record, 6).toUtf8()).object();
    if (cells.isEmpty())
        return u"a record without a change: "_s + what;
    for (auto cell = cells.begin(); cell != cells.end(); ++cell) {
        const QString before = textOf(cell->toArray()[0]), after = textOf(cell->toArray()[1]);
        if (row.value(cell.key(), u"NULL"_s) != before || before == after)
            return cell.key() + u" of a record does not agree: "_s + what;
        row[cell.key()] = after;
    }
    if (kind == 3)
        rows.remove(id);
    return {};
}

QString ReplayedLog::disagreement() {
    const Recordset log =
        read(u"SELECT cTable, iKyotenCd, iKyotenEb, nIDNo, cKey, iKind, cChanges, cOperation"
             " FROM DOUISHO_LOG ORDER BY tTime, cWrite, iSeq"_s);
    Rows rows = m_then;
    m_operations.clear();
    for (int record = m_before; record < log.rowCount(); ++record) {
        if (const QString wrong = apply(rows, log, record); !wrong.isEmpty())
            return wrong;
        if (const QString operation = log.text(record, 7);
            m_operations.value(m_operations.size() - 1) != operation)
            m_operations += operation;
    }
    const Rows now = rowsOfNow();
    if (rows.keys() != now.keys())
        return u"log and tables have other rows"_s;
    for (auto row = now.begin(); row != now.end(); ++row)
        for (auto cell = row->begin(); cell != row->end(); ++cell)
            if (rows[row.key()].value(cell.key(), u"NULL"_s) != *cell)
                return u"%1 %2: %3 in the log, %4 in the row"_s.arg(
                    row.key(), cell.key(), rows[row.key()].value(cell.key(), u"NULL"_s), *cell);
    return {};
}
