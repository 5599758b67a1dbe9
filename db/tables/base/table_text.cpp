#include "db/tables/base/table_text.h"

#include "db/sql_text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Blanks before the first entry of a list, and before the others.
QString listLead(bool first) {
    return first ? u"      "_s : u"     ,"_s;
}

QString assignment(const ColumnText &column, const QString &literal) {
    // The server's time is written with one blank, values with two.
    const QString equals = column.use == ColumnUse::UpDateTime ? u" = "_s : u" =  "_s;
    return column.name.toString() + equals + literal;
}

} // namespace

bool TableText::hasDerivedColumns() const {
    return std::any_of(columns.begin(), columns.end(), [](const ColumnText &column) {
        return column.use == ColumnUse::Joined || column.isAudit();
    });
}

QString selectSql(const TableText &table) {
    const QString name = table.name.toString();
    QString sql = u"  select"_s;
    bool first = true;
    for (const ColumnText &column : table.columns) {
        sql += listLead(first);
        sql += column.source.isEmpty() ? name + u'.' + column.name.toString() : column.source.toString();
        sql += u" as "_s + column.name.toString();
        first = false;
    }
    return sql + u"  FROM      "_s + name + table.joins.toString();
}

QString maxSql(const TableText &table, QStringView column) {
    const QString name = table.name.toString();
    return u"  select      max(%1.%2) as %2  FROM      %1"_s.arg(name, column.toString());
}

QString insertSql(const TableText &table, const QStringList &literals) {
    QString columns;
    QString values;
    for (size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].use == ColumnUse::Joined)
            continue;
        const QString lead = listLead(columns.isEmpty());
        columns += lead + table.columns[i].name.toString();
        values += lead + literals[qsizetype(i)];
    }
    return u" insert into    "_s + table.name.toString() + u" ("_s + columns + u" )values( "_s + values +
           u" ) "_s;
}

QStringList withAudit(const TableText &table, QStringList literals, const QString &computer) {
    for (size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].use == ColumnUse::PcName)
            literals[qsizetype(i)] = sqlText(computer);
        else if (table.columns[i].use == ColumnUse::UpDateTime)
            literals[qsizetype(i)] = u"GetDate()"_s;
    }
    return literals;
}

QString updateSql(const TableText &table, const QStringList &literals) {
    QString assignments;
    for (size_t i = 0; i < table.columns.size(); ++i) {
        const ColumnText &column = table.columns[i];
        if (column.use != ColumnUse::Key && column.use != ColumnUse::Joined)
            assignments += listLead(assignments.isEmpty()) + assignment(column, literals[qsizetype(i)]);
    }
    return u" update      "_s + table.name.toString() + u" set "_s + assignments + u" where"_s +
           keyConditions(table, literals, false);
}

QString deleteSql(const TableText &table, const QStringList &literals) {
    return u" delete from      "_s + table.name.toString() + u" where"_s +
           keyConditions(table, literals, false);
}

QString keyConditions(const TableText &table, const QStringList &literals, bool qualified) {
    QString conditions;
    for (size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].use != ColumnUse::Key)
            continue;
        conditions += conditions.isEmpty() ? u"    "_s : u"    and "_s;
        if (qualified)
            conditions += table.name.toString() + u'.';
        conditions += table.columns[i].name.toString() + u" = "_s + literals[qsizetype(i)];
    }
    return conditions;
}

QString copySql(QStringView table, const QList<std::pair<QString, QString>> &assignments,
                const QString &where) {
    QString sql = u" update      "_s + table.toString() + u" set "_s;
    bool first = true;
    for (const auto &[column, literal] : assignments) {
        sql += listLead(first) + column + u" =  "_s + literal;
        first = false;
    }
    return sql + u" where "_s + where;
}
