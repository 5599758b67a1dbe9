#include "import/import_query.h"

#include "app/base/dates.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString subTable = u"RIYOUSHA_SUB"_s;

QString tableOf(const ImportDescription &it, bool sub) {
    return sub ? subTable : it.table;
}

/// Doctors' numbers are texts.
QString codeLiteral(const ImportDescription &it, const QString &code) {
    return it.codeColumn == u"cIDNo" ? sqlText(code) : sqlNumber(code.toLongLong());
}

QString codesIn(const ImportDescription &it, const QStringList &codes) {
    QStringList literals;
    for (const QString &code : codes)
        literals += codeLiteral(it, code);
    return it.codeColumn + u" IN ("_s + literals.join(u", "_s) + u')';
}

QString ofBranch(const ImportDescription &it, const Branch &branch, const QString &table) {
    return it.ofBranch ? sqlWhere(branch, table) + u" and "_s : QString();
}

/// Columns are named after what they hold: texts c, dates t and s, numbers otherwise.
QString literal(const QString &column, const QString &value) {
    if (value.isEmpty())
        return u"Null"_s;
    if (column.startsWith(u'c') || column == u"iIsiCd2")
        return sqlText(value);
    return column.startsWith(u't') || column.startsWith(u's') ? sqlText(value)
                                                              : sqlNumber(value.toLongLong());
}

} // namespace

QStringList storedColumns(const ImportDescription &description) {
    QStringList columns;
    const auto add = [&](const QString &column) {
        if (!column.isEmpty() && column != description.codeColumn && !columns.contains(column))
            columns += column;
    };
    for (const ImportField &field : description.fields) {
        add(field.column);
        for (const FollowingColumn &following : field.follows)
            add(following.column);
    }
    return columns;
}

QString storedRowsSql(const ImportDescription &description, const Branch &branch) {
    const bool patients = description.kind == ImportKind::Patients;
    QString select = u"SELECT "_s + description.table + u'.' + description.codeColumn;
    for (const QString &column : storedColumns(description)) {
        const auto field = std::ranges::find(description.fields, column, &ImportField::column);
        select +=
            u", "_s + tableOf(description, field != description.fields.end() && field->inSub) + u'.' + column;
    }
    select += u", "_s + tableOf(description, patients) + u'.' + description.codeColumn +
              u" AS inSub FROM "_s + description.table;
    if (patients)
        select += u" LEFT JOIN RIYOUSHA_SUB ON "_s + sqlSamePatient(subTable, description.table);
    if (description.ofBranch)
        select += u" WHERE "_s + sqlWhere(branch, description.table);
    // By their numbers, which the trial's texts name: a server keeps rows otherwise after each change.
    const QString code = description.table + u'.' + description.codeColumn;
    const QString length = description.codeColumn == u"cIDNo" ? u"LEN("_s + code + u"), "_s : QString();
    return select + u" ORDER BY "_s + length + code;
}

QString lockImportsSql() {
    return u"UPDATE KYOTEN SET iUsedFlg = iUsedFlg"_s;
}

QString lockRowsSql(const ImportDescription &description, const Branch &branch, const QStringList &codes) {
    const QString name = description.nameColumn();
    return u"UPDATE "_s + description.table + u" SET "_s + name + u" = "_s + name + u" WHERE "_s +
           ofBranch(description, branch, description.table) + codesIn(description, codes);
}

QList<std::pair<QString, QString>> writtenConditions(const ImportDescription &description,
                                                     const Branch &branch, const QStringList &codes,
                                                     bool news) {
    QStringList tables{description.table};
    if (description.kind == ImportKind::Patients && !news)
        tables += {subTable, u"DOUIKIROKU"_s};
    QList<std::pair<QString, QString>> conditions;
    for (const QString &table : tables)
        conditions.append({table, ofBranch(description, branch, table) + codesIn(description, codes)});
    return conditions;
}

QString highestCodeSql(const ImportDescription &description, const Branch &branch) {
    const QString code =
        description.codeColumn == u"cIDNo" ? u"CAST(cIDNo AS NUMERIC(10))"_s : description.codeColumn;
    const QString select = u"SELECT MAX("_s + code + u") FROM "_s + description.table;
    return description.ofBranch ? select + u" WHERE "_s + sqlWhere(branch, description.table) : select;
}

QString insertRowsSql(const ImportDescription &description, const Branch &branch, bool sub,
                      const QStringList &columns, const std::vector<RowToWrite> &rows,
                      const QString &computer) {
    QString sql = u"INSERT INTO "_s + tableOf(description, sub) + u" ("_s;
    if (description.ofBranch)
        sql += u"iKyotenCd, iKyotenEb, "_s;
    sql += description.codeColumn;
    for (const QString &column : columns)
        sql += u", "_s + column;
    sql += u", cPcName, tUpDateTime) VALUES "_s;
    constexpr qsizetype likelyLength = 30; // of a value
    sql.reserve(sql.size() + qsizetype(rows.size()) * (columns.size() + 4) * likelyLength);
    const QString begin =
        description.ofBranch ? u"(%1, %2, "_s.arg(branch.iKyotenCd).arg(branch.iKyotenEb) : u"("_s;
    const QString end = u", "_s + sqlText(computer) + u", GetDate())"_s;
    for (size_t i = 0; i < rows.size(); ++i) {
        sql += (i == 0 ? QString() : u", "_s) + begin + codeLiteral(description, rows[i].code);
        for (const QString &column : columns) {
            sql += u", ";
            sql += literal(column, rows[i].values.value(column));
        }
        sql += end;
    }
    return sql;
}

QStringList insertBesidePatientsSql(const Branch &branch, const QStringList &patients, bool sub,
                                    const QString &computer) {
    QStringList tables{u"DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo, cPcName, tUpDateTime)"
                       " SELECT iKyotenCd, iKyotenEb, nIDNo, CONVERT(VARCHAR(7), GetDate(), 111), 1, "_s};
    if (sub)
        tables += u"RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, cPcName, tUpDateTime)"
                  " SELECT iKyotenCd, iKyotenEb, nIDNo, "_s;
    QStringList statements;
    for (const QString &table : tables)
        statements += u"INSERT INTO "_s + table + sqlText(computer) + u", GetDate() FROM RIYOUSHA WHERE "_s +
                      sqlWhere(branch, u"RIYOUSHA") + u" and nIDNo IN ("_s + patients.join(u", ") + u')';
    return statements;
}

QString updateRowSql(const ImportDescription &description, const Branch &branch, bool sub,
                     const RowToWrite &row, const QString &computer) {
    const QString table = tableOf(description, sub);
    QString sql = u"UPDATE "_s + table + u" SET "_s;
    QStringList columns = row.values.keys();
    columns.sort();
    for (const QString &column : columns)
        sql += column + u" = "_s + literal(column, row.values.value(column)) + u", "_s;
    return sql + u"cPcName = "_s + sqlText(computer) + u", tUpDateTime = GetDate() WHERE "_s +
           ofBranch(description, branch, table) + codesIn(description, {row.code});
}

QString writtenRowsSql(const ImportDescription &description, const Branch &branch, const QStringList &columns,
                       const QStringList &codes) {
    return u"SELECT "_s + description.codeColumn + u", "_s + columns.join(u", "_s) + u" FROM "_s +
           description.table + u" WHERE "_s + ofBranch(description, branch, description.table) +
           codesIn(description, codes);
}
