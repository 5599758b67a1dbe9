#include "sample/server_database.h"

#include "db/adodb.h"
#include "db/connection_settings.h"
#include "db/sql_text.h"
#include "db/tables/schema.h"
#include "sample/sample_database.h"

#include <QTemporaryDir>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

constexpr int rowsInStatement = 200;

/// Those that others refer to come first.
QStringList tables() {
    QStringList names;
    for (const QString &statement : schemaStatements())
        if (statement.startsWith(u"CREATE TABLE"))
            names.append(statement.section(u' ', 2, 2));
    return names;
}

/// "(…, …)" of one row. Numbers go as texts, too, which every server reads.
QString literals(const Recordset &rows, int row) {
    QStringList cells;
    for (int column = 0; column < rows.columnCount(); ++column)
        cells.append(sqlText(rows.text(row, column)));
    return u'(' + cells.join(u", ") + u')';
}

bool copyTable(cT_ADODB &from, cT_ADODB &to, const QString &table) {
    Recordset rows;
    if (from.iOpenRecSet(rows, u"SELECT * FROM "_s + table) != 0)
        return false;
    const QString head = u"INSERT INTO %1 (%2) VALUES "_s.arg(table, rows.columns().join(u", "));
    for (int first = 0; first < rows.rowCount(); first += rowsInStatement) {
        QStringList values;
        for (int row = first; row < std::min(first + rowsInStatement, rows.rowCount()); ++row)
            values.append(literals(rows, row));
        if (to.iExecSQL(head + values.join(u", ")) != 0)
            return false;
    }
    return true;
}

bool copyAll(cT_ADODB &from, cT_ADODB &to) {
    Transaction transaction(to);
    const QStringList names = tables();
    return transaction.begun() &&
           std::ranges::all_of(names, [&](const QString &table) { return copyTable(from, to, table); }) &&
           transaction.commit() == 0;
}

} // namespace

Result<> copyToServer(const QString &path, const QString &connectionString) {
    cT_ADODB from, to;
    from.iInit(u"Provider=SQLite;Data Source="_s + path);
    to.iInit(connectionString);
    if (from.iConnect() != 0 || to.iConnect() != 0)
        return Failure{(from.sErrMsg() + to.sErrMsg()).simplified()};
    if (const Result<bool> made = makeSchema(to); !made)
        return Failure{made.reason().simplified()};
    const Result<Recordset> branches = readRows(to, u"SELECT COUNT(*) FROM KYOTEN"_s);
    if (!branches)
        return Failure{branches.reason().simplified()};
    if (branches->number(0, 0) > 0)
        return Failure{
            u"データベース「%1」にはすでにデータがあります。見本は空のデータベースに作成してください。"_s.arg(
                to.sDbName())};
    if (!copyAll(from, to))
        return Failure{u"データベース「%1」に見本を作成できません。（%2）"_s.arg(
            to.sDbName(), (from.sErrMsg() + to.sErrMsg()).simplified())};
    // Counts for the planner, which this server else takes a minute later.
    if (to.dialect() == SqlDialect::PostgreSql && to.iExecSQL(u"ANALYZE"_s) != 0)
        return Failure{to.sErrMsg().simplified()};
    return {};
}

Result<> makeSampleAt(const QString &connectionString, QDate day, int patients) {
    if (const std::optional<QString> file = embeddedFile(connectionString))
        return makeSampleDatabase(*file, day, patients);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"sample.db"_s);
    const Result<> made = makeSampleDatabase(path, day, patients);
    return made ? copyToServer(path, connectionString) : made;
}

} // namespace sample
