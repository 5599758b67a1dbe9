#include "db/tables/schema.h"

#include "db/sql_text.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A file that is part of the program.
QString embeddedText(const QString &name) {
    QFile file(u":/db/"_s + name);
    const bool opened = file.open(QIODevice::ReadOnly);
    Q_ASSERT(opened);
    return opened ? QString::fromUtf8(file.readAll()) : QString();
}

/// SQLite has a catalogue of its own; the servers, of which one folds names, have the standard's.
QString sqlOfTable(SqlDialect dialect, QStringView table) {
    return dialect == SqlDialect::Embedded
               ? u"SELECT COUNT(*) FROM sqlite_master WHERE name = "_s + sqlText(table.toString())
               : u"SELECT COUNT(*) FROM INFORMATION_SCHEMA.TABLES WHERE UPPER(TABLE_NAME) = "_s +
                     sqlText(table.toString());
}

/// What the engine lacks of the server's functions, where it has to be made in the database.
QString functionsOf(SqlDialect dialect) {
    return dialect == SqlDialect::PostgreSql ? embeddedText(u"postgres.sql"_s) : QString();
}

} // namespace

Result<bool> hasTable(cT_ADODB &db, QStringView table) {
    const ErrorsSince errors(db);
    if (db.iConnect() != 0) // only then it is known which server it is
        return Failure{errors.text()};
    const Result<Recordset> tables = readRows(db, sqlOfTable(db.dialect(), table));
    return tables ? Result<bool>(tables->number(0, 0) > 0) : Result<bool>(Failure{tables.reason()});
}

Result<bool> makeTables(cT_ADODB &db, const QString &statements, QStringView table) {
    if (Result<bool> made = hasTable(db, table); !made || *made)
        return made ? Result<bool>(false) : made;
    const ErrorsSince errors(db);
    {
        Transaction transaction(db);
        if (transaction.begun() && db.iExecSQL(statements) == 0 && transaction.commit() == 0)
            return true;
    }
    // Of two that begin at once the second fails when the first is done.
    const QString why = errors.text();
    if (const Result<bool> made = hasTable(db, table); made && *made)
        return false;
    return Failure{why};
}

Result<bool> hasSchema(cT_ADODB &db) {
    return hasTable(db, u"KYOTEN");
}

Result<bool> makeSchema(cT_ADODB &db) {
    Result<bool> made = makeTables(db, functionsOf(db.dialect()) + embeddedText(u"schema.sql"_s), u"KYOTEN");
    return made ? made
                : Failure{u"データベースに表を作成できません。何も作成していません。"_s + made.reason()};
}

QStringList schemaStatements() {
    QString text;
    for (const QString &line : embeddedText(u"schema.sql"_s).split(u'\n'))
        if (!line.trimmed().startsWith(u"--"))
            text += line + u'\n';
    QStringList statements;
    for (const QString &statement : text.split(u';'))
        if (!statement.trimmed().isEmpty())
            statements.append(statement.trimmed());
    return statements;
}
