#include "consent/record/record_write_query.h"

#include "db/recordset.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"
#include "history/watched_tables.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView tableName = u"RIYOUSHA_DOUI_REC";

QString column(QStringView name) {
    return u"RIYOUSHA_DOUI_REC."_s.append(name);
}

QString equals(QStringView name, qint64 value) {
    return u" and "_s + column(name) + u" = "_s + sqlNumber(value);
}

QString ofKind(const PatientKey &patient, short iHenkeiFlg) {
    return sqlWhere(patient, tableName) + equals(u"iHenkeiFlg", iHenkeiFlg);
}

QString selectKeys() {
    return u"SELECT iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate"_s;
}

// What a newest row must be when it is marked.
QString usable() {
    return u"(RIYOUSHA_DOUI_REC.iReceptDisabledFlg <> 1 or RIYOUSHA_DOUI_REC.iReceptDisabledFlg is null)"_s;
}

QString wronglyNewest(const ConsentRowKey &newest) {
    const QString found =
        u" and not (RIYOUSHA_DOUI_REC.nDate = "_s + sqlNumber(newest.nDate) +
        (newest.iHenkeiFlg == 0 ? QString() : equals(u"nHenkeiDouiDate", newest.nHenkeiDouiDate)) +
        u" and "_s + usable() + u')';
    return ofKind(newest.patient, newest.iHenkeiFlg) + found;
}

QString insertInto(const QList<ColumnValue> &columns, const QString &before, const QString &after) {
    QStringList into, values;
    for (const ColumnValue &written : columns) {
        into.append(written.column);
        values.append(written.value);
    }
    return u"INSERT INTO RIYOUSHA_DOUI_REC ("_s + into.join(u", ") + u')' + before + values.join(u", ") +
           after;
}

/// The patients first, by which a server finds the rows.
QString anyOf(const std::vector<ConsentRowKey> &rows, QString (*condition)(const ConsentRowKey &)) {
    std::vector<PatientKey> patients;
    QStringList conditions;
    for (const ConsentRowKey &row : rows) {
        patients.push_back(row.patient);
        conditions += u'(' + condition(row) + u')';
    }
    return sqlOfPatients(patients) + u" and ("_s + conditions.join(u" or ") + u')';
}

} // namespace

QString sqlStanding(const std::vector<PatientKey> &patients) {
    return watchedTable(tableName)->selectSql(sqlOfPatients(patients));
}

QString sqlLockPatient(const PatientKey &patient) {
    return u"UPDATE RIYOUSHA SET iTenki = iTenki WHERE "_s + sqlWhere(patient, u"RIYOUSHA");
}

QString sqlOfRow(const ConsentRowKey &row) {
    const QString where = ofKind(row.patient, row.iHenkeiFlg) + equals(u"nDate", row.nDate);
    return row.iHenkeiFlg == 0 ? where : where + equals(u"nHenkeiDouiDate", row.nHenkeiDouiDate);
}

QString sqlOfNewest(const ConsentRowKey &row) {
    return sqlOfRow(row) + equals(u"iNewestFlg", 1);
}

QString sqlOfPatients(const std::vector<PatientKey> &patients) {
    return sqlWhere(patients, tableName);
}

QString sqlOfDate(const PatientKey &patient, qint32 nDate) {
    return sqlWhere(patient, tableName) + equals(u"nDate", nDate);
}

QString sqlUnchangedSince(const QString &updateTime) {
    return updateTime.isEmpty() ? u"tUpDateTime IS NULL"_s : u"tUpDateTime = "_s + sqlText(updateTime);
}

QString sqlSendFlags(const std::vector<PatientKey> &patients) {
    return selectKeys() + u", iSendFlg FROM RIYOUSHA_DOUI_REC WHERE "_s + sqlOfPatients(patients);
}

ConsentRowKey keyAt(const Recordset &rows, int row) {
    const auto number = [&](int column) { return rows.number(row, column); };
    return {{short(number(0)), short(number(1)), qint32(number(2))},
            qint32(number(3)),
            short(number(4)),
            qint32(number(5))};
}

QList<ColumnValue> auditColumns(const QString &computer) {
    return {{u"cPcName"_s, sqlText(computer)}, {u"tUpDateTime"_s, u"GetDate()"_s}};
}

QString sqlChange(const QString &where, const QList<ColumnValue> &columns) {
    QStringList sets;
    for (const ColumnValue &written : columns)
        sets.append(written.column + u" = "_s + written.value);
    return u"UPDATE RIYOUSHA_DOUI_REC SET "_s + sets.join(u", ") + u" WHERE "_s + where;
}

QString sqlInsert(const QList<ColumnValue> &columns) {
    return insertInto(columns, u" VALUES ("_s, u")"_s);
}

QString sqlInsertCopy(const QString &where, const QList<ColumnValue> &columns) {
    return insertInto(columns, u" SELECT "_s, u" FROM RIYOUSHA_DOUI_REC WHERE "_s) + where;
}

QString sqlRemove(const QString &where) {
    return u"DELETE FROM RIYOUSHA_DOUI_REC WHERE "_s + where;
}

QString sqlUsableRows(const std::vector<PatientKey> &patients) {
    return selectKeys() + u" FROM RIYOUSHA_DOUI_REC WHERE "_s + sqlOfPatients(patients) +
           u" and RIYOUSHA_DOUI_REC.iReceptDisabledFlg = 0 and RIYOUSHA_DOUI_REC.iHenkeiFlg IN (0, 1)"
           " ORDER BY iKyotenCd, iKyotenEb, nIDNo, iHenkeiFlg, nDate, nHenkeiDouiDate"_s;
}

std::vector<ConsentRowKey> newestRows(const Recordset &rows) {
    std::vector<ConsentRowKey> newest;
    for (int row = 0; row < rows.rowCount(); ++row) {
        const ConsentRowKey key = keyAt(rows, row);
        if (!newest.empty() && newest.back().patient == key.patient &&
            newest.back().iHenkeiFlg == key.iHenkeiFlg)
            newest.back() = key;
        else
            newest.push_back(key);
    }
    return newest;
}

QString sqlWronglyNewest(const std::vector<ConsentRowKey> &newest) {
    return anyOf(newest, wronglyNewest) +
           u" and (RIYOUSHA_DOUI_REC.iNewestFlg <> 0 or RIYOUSHA_DOUI_REC.iNewestFlg is null)"_s;
}

QString sqlNotYetNewest(const std::vector<ConsentRowKey> &newest) {
    return anyOf(newest, sqlOfRow) + u" and "_s + usable() +
           u" and (RIYOUSHA_DOUI_REC.iNewestFlg <> 1 or RIYOUSHA_DOUI_REC.iNewestFlg is null)"_s;
}
