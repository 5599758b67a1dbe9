#include "masters/master_query.h"

#include "db/sql_text.h"
#include "db/tables/base/table_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A facility's code; a doctor's where it is held as a number.
QString sqlCode(const QString &code) {
    return sqlNumber(code.toLongLong());
}

/// A doctor's number as patients hold it, and as consents do.
QString namesDoctor(const QString &code) {
    return u"(RIYOUSHA.nDouiIsiCd = "_s + sqlCode(code) + u" OR EXISTS (SELECT 1 FROM RIYOUSHA_SUB WHERE "_s +
           sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") + u" AND RIYOUSHA_SUB.iIsiCd2 = "_s + sqlText(code) +
           u"))"_s;
}

QString namesFacility(const QString &code) {
    return u"(RIYOUSHA.nSisetsuCd = "_s + sqlCode(code) + u" OR EXISTS (SELECT 1 FROM RIYOUSHA_SUB WHERE "_s +
           sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") + u" AND RIYOUSHA_SUB.iSisetsuCode = "_s +
           sqlCode(code) + u"))"_s;
}

/// Items that a doctor's row repeats of its facility, each with what belongs to it.
struct Repeated {
    QStringList facility;
    QStringList doctor;
};

const QList<Repeated> &repeatedByDoctors() {
    static const QList<Repeated> items{
        {{u"cShamei1"_s, u"cShameiKana1"_s}, {u"cKikan"_s, u"cKikanKana"_s}},
        {{u"cAddress1"_s, u"cAddress2"_s, u"cAddressKana"_s, u"cYubinNo"_s},
         {u"cAddress1"_s, u"cAddress2"_s, u"cAddressKana"_s, u"cYubinNo"_s}},
        {{u"cTelNo"_s}, {u"cTelNo"_s}},
        {{u"cFaxNo"_s}, {u"cFaxNo"_s}},
    };
    return items;
}

bool isOfBranch(MasterKind kind) {
    return kind != MasterKind::Doctor && kind != MasterKind::Facility;
}

/// Of a branch's master; the first one holds the row itself.
QList<QStringView> tablesOf(MasterKind kind) {
    if (kind == MasterKind::Patient)
        return {u"RIYOUSHA", u"RIYOUSHA_SUB", u"DOUIKIROKU"};
    return {kind == MasterKind::Staff ? u"STAFF" : u"SOUDAN"};
}

QString tableOf(MasterKind kind) {
    return tablesOf(kind).first().toString();
}

/// Rows of a branch bear keys like a patient's.
PatientKey patientOf(const Branch &branch, const QString &code) {
    return {branch.iKyotenCd, branch.iKyotenEb, qint32(code.toLongLong())};
}

/// Whom copies of a doctor or a facility reach.
QString reachedPatients(MasterKind kind, const QString &code) {
    if (kind == MasterKind::Doctor)
        return namesDoctor(code);
    return u"(RIYOUSHA.nSisetsuCd = "_s + sqlCode(code) +
           u" OR EXISTS (SELECT 1 FROM DOCTOR WHERE DOCTOR.iSisetsuCode = "_s + sqlCode(code) +
           u" AND (DOCTOR.cIDNo = CAST(RIYOUSHA.nDouiIsiCd AS VARCHAR(10))"
           " OR EXISTS (SELECT 1 FROM RIYOUSHA_SUB WHERE "_s +
           sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") + u" AND RIYOUSHA_SUB.iIsiCd2 = DOCTOR.cIDNo))))"_s;
}

QString namesStaff(const QString &code) {
    QStringList columns{u"nTantou"_s};
    for (int i = 2; i <= 10; ++i)
        columns += u"nTantou%1"_s.arg(i);
    return u"("_s + sqlCode(code) + u" IN (RIYOUSHA."_s + columns.join(u", RIYOUSHA."_s) + u"))"_s;
}

QString namesCounsellor(const QString &code) {
    return u"RIYOUSHA_SUB.iSoudaninId = "_s + sqlCode(code);
}

/// A month without a consent day is none: it holds the types by which periods are reckoned.
QString patientUsesSql(const PatientKey &patient) {
    return u"SELECT (SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC WHERE "_s +
           sqlWhere(patient, u"RIYOUSHA_DOUI_REC") + u") + (SELECT COUNT(*) FROM DOUIKIROKU WHERE "_s +
           sqlWhere(patient, u"DOUIKIROKU") +
           u" AND (DOUIKIROKU.tDouiDay1 IS NOT NULL OR DOUIKIROKU.tDouiDay2 IS NOT NULL)) AS consents,"
           " 0 AS patients, 0 AS doctors"_s;
}

QString branchListSql(MasterKind kind, const Branch &branch) {
    if (kind == MasterKind::Patient)
        return u"SELECT RIYOUSHA.nIDNo AS code, RIYOUSHA.cName AS name, RIYOUSHA.cNameKana AS kana,"
               " RIYOUSHA.tBirthday AS birthday, RIYOUSHA.cTelNo AS tel, RIYOUSHA.cYubinNo AS yubin,"
               " RIYOUSHA.cAdress1 AS address1, RIYOUSHA.cAdress2 AS address2,"
               " CASE WHEN RIYOUSHA.iSejutsuKubun <> 0 THEN "_s +
               sqlText(u"鍼灸"_s) + u" ELSE "_s + sqlText(u"マッサージ"_s) +
               u" END AS kind, RIYOUSHA.cDouiIsiName1 AS doctor, STAFF.cName AS staff,"
               " RIYOUSHA.cSisetsuName AS facility, SOUDAN.cName AS counsellor, RIYOUSHA.tExpireDay AS ended"
               " FROM RIYOUSHA LEFT JOIN RIYOUSHA_SUB ON "_s +
               sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") +
               u" LEFT JOIN STAFF ON STAFF.nIDNo = RIYOUSHA.nTantou"
               " AND "_s +
               sqlSameBranch(u"STAFF", u"RIYOUSHA") +
               u" LEFT JOIN SOUDAN ON SOUDAN.nIDNo = RIYOUSHA_SUB.iSoudaninId AND "_s +
               sqlSameBranch(u"SOUDAN", u"RIYOUSHA") + u" WHERE "_s + sqlWhere(branch, u"RIYOUSHA") +
               u" ORDER BY RIYOUSHA.nIDNo"_s;
    const QString suspended =
        u" CASE WHEN %1.iChusiFlg <> 0 THEN "_s + sqlText(u"休止"_s) + u" ELSE '' END AS state"_s;
    if (kind == MasterKind::Staff)
        return u"SELECT STAFF.nIDNo AS code, STAFF.cName AS name, STAFF.cNameKana AS kana, STAFF.cSikaku AS "
               u"licence,"
               " STAFF.cTelNo AS tel, STAFF.cMobNo AS mobile, STAFF.cEmail AS mail,"_s +
               suspended.arg(u"STAFF"_s) + u" FROM STAFF WHERE "_s + sqlWhere(branch, u"STAFF") +
               u" ORDER BY STAFF.nIDNo"_s;
    return u"SELECT SOUDAN.nIDNo AS code, SOUDAN.cName AS name, SOUDAN.cNameKana AS kana,"
           " SISETSU.cShamei1 AS facility, SOUDAN.cTelNo AS tel, SOUDAN.cFaxNo AS fax, SOUDAN.cMobNo AS "
           "mobile,"
           " SOUDAN.cMail1 AS mail,"_s +
           suspended.arg(u"SOUDAN"_s) +
           u" FROM SOUDAN LEFT JOIN SISETSU ON SISETSU.nIDNo = SOUDAN.nSisetsuCode WHERE "_s +
           sqlWhere(branch, u"SOUDAN") + u" ORDER BY SOUDAN.nIDNo"_s;
}

} // namespace

QString masterListSql(MasterKind kind, const Branch &branch) {
    if (isOfBranch(kind))
        return branchListSql(kind, branch);
    if (kind == MasterKind::Doctor)
        return u"SELECT DOCTOR.cIDNo AS code, DOCTOR.cName AS name, DOCTOR.cNameKana AS kana,"
               " DOCTOR.cKikan AS kikan, DOCTOR.cTelNo AS tel, DOCTOR.cFaxNo AS fax,"
               " DOCTOR.cYubinNo AS yubin, DOCTOR.cAddress1 AS address1, DOCTOR.cAddress2 AS address2,"
               " DOCTOR.cMail1 AS mail, SISETSU.cDouiIrai AS irai,"
               " CASE WHEN DOCTOR.iDouiiraiON = 1 THEN "_s +
               sqlText(u"個別"_s) +
               u" ELSE '' END AS letters, USED.patients AS patients"
               " FROM DOCTOR LEFT JOIN SISETSU ON SISETSU.nIDNo = DOCTOR.iSisetsuCode"
               " LEFT JOIN (SELECT cIsiCd, COUNT(*) AS patients FROM"
               " (SELECT DISTINCT cIsiCd, iKyotenCd, iKyotenEb, nIDNo FROM RIYOUSHA_DOUI_REC) AS NAMED"
               " GROUP BY cIsiCd) AS USED ON USED.cIsiCd = DOCTOR.cIDNo"
               " ORDER BY CAST(DOCTOR.cIDNo AS NUMERIC(10))"_s;
    return u"SELECT SISETSU.nIDNo AS code, SISETSU.cShamei1 AS name, SISETSU.cShameiKana1 AS kana,"
           " SISETSU.cSisetsuType AS kind, SISETSU.cTelNo AS tel, SISETSU.cFaxNo AS fax,"
           " SISETSU.cYubinNo AS yubin, SISETSU.cAddress1 AS address1, SISETSU.cAddress2 AS address2,"
           " SISETSU.cDouiIrai AS irai, SISETSU.cComment AS comment,"
           " WORKING.doctors AS doctors, HOUSED.patients AS patients FROM SISETSU"
           " LEFT JOIN (SELECT iSisetsuCode, COUNT(*) AS doctors FROM DOCTOR GROUP BY iSisetsuCode)"
           " AS WORKING ON WORKING.iSisetsuCode = SISETSU.nIDNo"
           " LEFT JOIN (SELECT nSisetsuCd, COUNT(*) AS patients FROM RIYOUSHA GROUP BY nSisetsuCd)"
           " AS HOUSED ON HOUSED.nSisetsuCd = SISETSU.nIDNo ORDER BY SISETSU.nIDNo"_s;
}

QString masterUsesSql(MasterKind kind, const Branch &branch, const QString &code) {
    const QString count = u"SELECT COUNT(*) FROM "_s;
    if (kind == MasterKind::Patient)
        return patientUsesSql(patientOf(branch, code));
    if (isOfBranch(kind))
        return u"SELECT 0 AS consents, ("_s + count + u"RIYOUSHA LEFT JOIN RIYOUSHA_SUB ON "_s +
               sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") + u" WHERE "_s + sqlWhere(branch, u"RIYOUSHA") +
               u" AND "_s + (kind == MasterKind::Staff ? namesStaff(code) : namesCounsellor(code)) +
               u") AS patients, 0 AS doctors"_s;
    if (kind == MasterKind::Doctor)
        return u"SELECT ("_s + count + u"RIYOUSHA_DOUI_REC WHERE RIYOUSHA_DOUI_REC.cIsiCd = "_s +
               sqlText(code) + u") AS consents, ("_s + count + u"RIYOUSHA WHERE "_s + namesDoctor(code) +
               u") AS patients, 0 AS doctors"_s;
    return u"SELECT 0 AS consents, ("_s + count + u"RIYOUSHA WHERE "_s + namesFacility(code) +
           u") AS patients, ("_s + count + u"DOCTOR WHERE DOCTOR.iSisetsuCode = "_s + sqlCode(code) +
           u") AS doctors"_s;
}

QString masterLockSql(MasterKind kind, const Branch &branch, const QString &code) {
    if (kind == MasterKind::Patient)
        return u"UPDATE RIYOUSHA SET iTenki = iTenki WHERE "_s +
               sqlWhere(patientOf(branch, code), u"RIYOUSHA");
    if (isOfBranch(kind))
        return u"UPDATE %1 SET cName = cName WHERE "_s.arg(tableOf(kind)) +
               sqlWhere(patientOf(branch, code), tableOf(kind));
    return kind == MasterKind::Doctor
               ? u"UPDATE DOCTOR SET cName = cName WHERE cIDNo = "_s + sqlText(code)
               : u"UPDATE SISETSU SET cShamei1 = cShamei1 WHERE nIDNo = "_s + sqlCode(code);
}

QString masterLockNewSql(MasterKind kind, const Branch &branch) {
    const QString offices = u"UPDATE KYOTEN SET cPcName = cPcName"_s;
    return isOfBranch(kind) ? offices + u" WHERE "_s + sqlWhere(branch, u"KYOTEN") : offices;
}

QString newPatientMonthSql(const PatientKey &patient, const QString &computer) {
    return u"INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo, cPcName, tUpDateTime) "
           u"VALUES"
           " (%1, %2, %3, CONVERT(VARCHAR(7), GetDate(), 111), 1, %4, GetDate())"_s.arg(
               sqlNumber(patient.iKyotenCd), sqlNumber(patient.iKyotenEb), sqlNumber(patient.nIDNo),
               sqlText(computer));
}

QStringList removePatientSql(const PatientKey &patient) {
    QStringList statements;
    for (const QStringView table : {u"DOUIKIROKU", u"RIYOUSHA_SUB"})
        statements += u"DELETE FROM %1 WHERE "_s.arg(table) + sqlWhere(patient, table);
    return statements;
}

QString masterLockPatientsSql(MasterKind kind, const QString &code) {
    return u"UPDATE RIYOUSHA SET iTenki = iTenki WHERE "_s + reachedPatients(kind, code);
}

QList<TouchedRows> masterRows(MasterKind kind, const Branch &branch, const QString &code) {
    if (kind == MasterKind::Doctor)
        return {{u"DOCTOR", u"cIDNo = "_s + sqlText(code)}};
    if (kind == MasterKind::Facility)
        return {{u"SISETSU", u"nIDNo = "_s + sqlCode(code)}};
    const PatientKey key = patientOf(branch, code);
    QList<TouchedRows> rows;
    for (const QStringView table : tablesOf(kind))
        rows.append({table, sqlWhere(key, table)});
    return rows;
}

QList<TouchedRows> masterCopies(MasterKind kind, const QString &code) {
    if (isOfBranch(kind))
        return {};
    QList<TouchedRows> rows{{u"RIYOUSHA", reachedPatients(kind, code)}};
    if (kind == MasterKind::Facility)
        rows += {{u"DOCTOR", u"iSisetsuCode = "_s + sqlCode(code)},
                 {u"CAREMANE", u"nSisetsuCode = "_s + sqlCode(code)},
                 {u"SOUDAN", u"nSisetsuCode = "_s + sqlCode(code)}};
    return rows;
}

QStringList facilityToDoctorsSql(const MasterValues &before, const MasterValues &now,
                                 const QString &computer) {
    QStringList statements;
    for (const Repeated &item : repeatedByDoctors()) {
        QList<std::pair<QString, QString>> values;
        QString where = u"iSisetsuCode = "_s + sqlCode(now.value(u"nIDNo"_s));
        bool changed = false;
        for (qsizetype i = 0; i < item.facility.size(); ++i) {
            const QString old = before.value(item.facility[i]);
            const QString fresh = now.value(item.facility[i]);
            changed = changed || old != fresh;
            values.append({item.doctor[i], sqlText(fresh)});
            // The first of an item's columns says whether it is repeated.
            if (i == 0)
                where += u" and "_s + item.doctor[i] + u" = "_s + sqlText(old);
        }
        values.append({u"cPcName"_s, sqlText(computer)});
        values.append({u"tUpDateTime"_s, u"GetDate()"_s});
        if (changed && !before.value(item.facility[0]).isEmpty())
            statements.append(copySql(u"DOCTOR", values, where));
    }
    return statements;
}
