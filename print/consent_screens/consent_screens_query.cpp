#include "print/consent_screens/consent_screens_query.h"

#include "db/sql_text.h"
#include "db/tables/base/consent_layout_columns.h"
#include "db/tables/keys_query.h"
#include "db/tables/masters/corp_sub.h"
#include "db/tables/patient/riyousha_sub.h"
#include "history/logged_transaction.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Columns of the select list before the settings, which come twice.
enum Column {
    PatientName,
    Kind,
    FirstTreatment,
    Newest,
    ConsentDay,
    PeriodStart,
    PeriodEnd,
    DoctorName,
    DoctorCode,
    DoctorSettings,
    Institution = DoctorSettings + 12,
    PatientSettings,
    ConsentDate = PatientSettings + 12,
    DoctorInstitution
};

QStringList settingColumns() {
    QStringList names;
    for (const auto &column : consentLayoutColumns<ConsentLayoutSettings>)
        names += column.name.toString();
    return names;
}

QString selectList() {
    QStringList list{u"RIYOUSHA.cName as RIYOU_NAME"_s,
                     u"RIYOUSHA.iSejutsuKubun"_s,
                     u"RIYOUSHA.tSyoryoDay"_s,
                     u"RIYOUSHA_DOUI_REC.iNewestFlg"_s,
                     u"RIYOUSHA_DOUI_REC.tDouiDay"_s,
                     u"RIYOUSHA_DOUI_REC.tDouiKaryoS"_s,
                     u"RIYOUSHA_DOUI_REC.tDouiKaryoE"_s,
                     u"DOCTOR.cName as DOC_NAME"_s,
                     u"DOCTOR.cIDno"_s};
    for (const QString &name : settingColumns())
        list += u"DOCTOR."_s + name;
    list += u"SISETSU.cShamei1"_s;
    for (const QString &name : settingColumns())
        list += u"RIYOUSHA_SUB.%1 as %1_Riyousya"_s.arg(name);
    list += QStringList{u"RIYOUSHA_DOUI_REC.nDate"_s, u"DOCTOR.cKikan"_s};
    return list.join(u", "_s);
}

/// Old data can bear two newest rows: the later one comes first.
QString patientSql(const PatientKey &patient, const QString &doctor) {
    return u"SELECT "_s + selectList() + u" FROM RIYOUSHA_SUB, RIYOUSHA LEFT JOIN RIYOUSHA_DOUI_REC ON "_s +
           sqlSamePatient(u"RIYOUSHA_DOUI_REC", u"RIYOUSHA") +
           u" AND RIYOUSHA_DOUI_REC.iNewestFlg = 1 AND RIYOUSHA_DOUI_REC.iHenkeiFlg = 0"
           " LEFT JOIN DOCTOR ON DOCTOR.cIDno = "_s +
           sqlText(doctor) + u" LEFT JOIN SISETSU ON SISETSU.nIDNo = DOCTOR.iSisetsuCode WHERE "_s +
           sqlWhere(patient, u"RIYOUSHA") + u" AND "_s + sqlSamePatient(u"RIYOUSHA", u"RIYOUSHA_SUB") +
           u" ORDER BY RIYOUSHA_DOUI_REC.nDate DESC"_s;
}

ConsentLayoutSettings settingsAt(const Recordset &rows, int first) {
    ConsentLayoutSettings settings;
    for (const auto member : ConsentLayoutSettings::members) {
        if (!rows.isNull(0, first))
            settings.*member = short(rows.number(0, first));
        ++first;
    }
    return settings;
}

/// The row in which settings are kept, and in whose name they are written.
struct Kept {
    QStringView table;
    QString where;
    QString operation;
};

Kept keptOf(const Branch &branch) {
    return {u"CORP_SUB", sqlWhere(branch, u"CORP_SUB"), u"会社の同意書式"_s};
}

Kept keptOf(const PatientKey &patient) {
    return {u"RIYOUSHA_SUB", sqlWhere(patient, u"RIYOUSHA_SUB"), u"利用者の同意書式"_s};
}

/// Nothing changes, but the row is locked until the transaction ends.
QString lockSql(const Kept &kept) {
    return u"UPDATE %1 SET iSaiDouiON = iSaiDouiON WHERE "_s.arg(kept.table) + kept.where;
}

cD_CORP_SUB keyOf(const Branch &branch) {
    cD_CORP_SUB key;
    key.iKyotenCd = branch.iKyotenCd;
    key.iKyotenEb = branch.iKyotenEb;
    return key;
}

cD_RIYOUSHA_SUB keyOf(const PatientKey &patient) {
    cD_RIYOUSHA_SUB key;
    static_cast<PatientKey &>(key) = patient;
    return key;
}

// The lock comes before the comparison: a colleague who writes the row meanwhile waits, or has been seen.
template <class TableClass, class Key>
Result<bool> storeOnce(cT_ADODB &db, const Key &of, const ConsentLayoutSettings &seen,
                       const ConsentLayoutSettings &settings, bool mayInsert) {
    auto record = keyOf(of);
    const ErrorsSince before(db);
    TableClass table;
    if (db.iConnect() != 0 || table.iInit(db) != 0)
        return Failure{before.text()};
    const Kept kept = keptOf(of);
    LoggedTransaction transaction(db, {kept.operation});
    if (!transaction.begun() || db.iExecSQL(lockSql(kept)) != 0 || table.iDataRead(&record) != 0)
        return Failure{before.text()};
    if (const Result<> watched = transaction.watch(kept.table, kept.where); !watched)
        return Failure{watched.reason()};
    const bool there = table.nデータ数() > 0;
    if (there)
        record = table.records().front();
    if (!record.ConsentLayoutSettings::same(seen) || (!there && !mayInsert))
        return false;
    static_cast<ConsentLayoutSettings &>(record) = settings;
    const short written =
        there ? table.iDataUpdate(&record, -1, false) : table.iDataInsert(&record, -1, false);
    if (written != 0)
        return Failure{before.text()};
    const Result<> committed = transaction.commit();
    return committed ? Result<bool>(true) : Failure{committed.reason()};
}

template <class TableClass, class Key>
Result<bool> store(cT_ADODB &db, const Key &of, const ConsentLayoutSettings &seen,
                   const ConsentLayoutSettings &settings, bool mayInsert) {
    return againAfterDeadlock(db, [&] { return storeOnce<TableClass>(db, of, seen, settings, mayInsert); });
}

} // namespace

Result<PatientConsent> readPatientConsent(cT_ADODB &db, const PatientKey &patient, const QString &doctor) {
    const Result<Recordset> read = readRows(db, patientSql(patient, doctor));
    if (!read)
        return Failure{read.reason() + u"\r\nreadDouiData()でエラー。"_s};
    const Recordset &rows = *read;
    if (rows.rowCount() == 0)
        return Failure{u"データが取得できませんでした。"_s};
    PatientConsent consent;
    consent.name = rows.text(0, PatientName);
    consent.acupuncture = rows.number(0, Kind) != 0;
    consent.firstTreatment = rows.date(0, FirstTreatment);
    consent.hasConsent = rows.number(0, Newest) == 1;
    consent.consent = {patient, qint32(rows.number(0, ConsentDate)), 0, 0};
    consent.consentDay = rows.date(0, ConsentDay);
    consent.period = {rows.date(0, PeriodStart), rows.date(0, PeriodEnd)};
    consent.doctorName = rows.text(0, DoctorName);
    consent.doctorCode = rows.text(0, DoctorCode);
    consent.institution = rows.text(0, Institution);
    if (consent.institution.isEmpty())
        consent.institution = rows.text(0, DoctorInstitution);
    consent.ofDoctor = settingsAt(rows, DoctorSettings);
    consent.ofPatient = settingsAt(rows, PatientSettings);
    return consent;
}

Result<QString> readConsentingDoctor(cT_ADODB &db, const PatientKey &patient) {
    const Result<Recordset> rows = readRows(
        db, u"SELECT CASE WHEN RIYOUSHA_DOUI_REC.nDate IS NULL THEN CAST(RIYOUSHA.nDouiIsiCd AS VARCHAR(10))"
            " ELSE RIYOUSHA_DOUI_REC.cIsiCd END FROM RIYOUSHA LEFT JOIN RIYOUSHA_DOUI_REC ON "_s +
                sqlSamePatient(u"RIYOUSHA_DOUI_REC", u"RIYOUSHA") +
                u" AND RIYOUSHA_DOUI_REC.iNewestFlg = 1 AND RIYOUSHA_DOUI_REC.iHenkeiFlg = 0 WHERE "_s +
                sqlWhere(patient, u"RIYOUSHA") + u" ORDER BY RIYOUSHA_DOUI_REC.nDate DESC"_s);
    if (!rows)
        return Failure{rows.reason()};
    return rows->rowCount() > 0 ? rows->text(0, 0).trimmed() : QString();
}

Result<std::optional<cD_CORP>> readHeadOffice(cT_ADODB &db, const Branch &branch) {
    const Result<Recordset> rows =
        readRows(db, u"SELECT  * "_s + u" FROM CORP "_s + u" WHERE iKyotenCd = "_s +
                         sqlNumber(branch.iKyotenCd) + u" and iKyotenEb = "_s + sqlNumber(branch.iKyotenEb));
    if (!rows)
        return Failure{rows.reason()};
    if (rows->rowCount() == 0)
        return std::optional<cD_CORP>();
    const auto text = [&](QStringView name) { return rows->text(0, rows->column(name)); };
    cD_CORP office;
    office.nIDNo = qint32(rows->number(0, rows->column(u"nIDNo")));
    office.cTelNo = text(u"cTelNo");
    office.cShamei1 = text(u"cShamei1");
    office.cDaihyo = text(u"cDaihyo");
    office.cAddress1 = text(u"cAddress1");
    office.cAddress2 = text(u"cAddress2");
    return std::optional(office);
}

Result<QString> readDoctorTelephone(cT_ADODB &db, const QString &doctor) {
    const Result<Recordset> rows =
        readRows(db, u"SELECT DOCTOR.cName, DOCTOR.cAddress1, DOCTOR.cTelNo "_s + u" FROM DOCTOR"_s +
                         u" WHERE DOCTOR.cIDno = "_s + sqlText(doctor));
    if (!rows)
        return Failure{rows.reason()};
    return rows->rowCount() > 0 ? rows->text(0, 2) : QString();
}

Result<> writeDoctorLayouts(cT_ADODB &db, const QString &doctor, bool acupuncture,
                            const ConsentLayoutSettings &settings) {
    QStringList sets;
    for (const auto &column : consentLayoutColumns<ConsentLayoutSettings>)
        if (!column.name.endsWith(acupuncture ? u"MasTypeNo" : u"HariTypeNo"))
            sets += column.name.toString() + u" = "_s +
                    sqlNumber(settings.*std::get<ConsentLayoutSettings::Member>(column.member));
    const Kept kept{u"DOCTOR", u"cIDNo = "_s + sqlText(doctor), u"医師の同意書式"_s};
    LoggedTransaction transaction(db, {kept.operation});
    if (!transaction.begun() || db.iExecSQL(lockSql(kept)) != 0)
        return Failure{transaction.said()};
    if (const Result<> watched = transaction.watch(kept.table, kept.where); !watched)
        return watched;
    if (db.iExecSQL(u"UPDATE DOCTOR SET "_s + sets.join(u", "_s) + u" WHERE "_s + kept.where) != 0)
        return Failure{transaction.said()};
    return transaction.commit();
}

Result<ConsentLayoutSettings> readCompanyLayouts(cT_ADODB &db, const Branch &branch) {
    cT_CORP_SUB table;
    const cD_CORP_SUB key = keyOf(branch);
    const ErrorsSince before(db);
    if (db.iConnect() != 0 || table.iInit(db) != 0 || table.iDataRead(&key) != 0)
        return Failure{before.text()};
    return table.nデータ数() > 0 ? ConsentLayoutSettings(table.records().front()) : ConsentLayoutSettings();
}

Result<bool> storeCompanyLayouts(cT_ADODB &db, const Branch &branch, const ConsentLayoutSettings &seen,
                                 const ConsentLayoutSettings &settings) {
    return store<cT_CORP_SUB>(db, branch, seen, settings, true);
}

Result<bool> storePatientLayouts(cT_ADODB &db, const PatientKey &patient, const ConsentLayoutSettings &seen,
                                 const ConsentLayoutSettings &settings) {
    return store<cT_RIYOUSHA_SUB>(db, patient, seen, settings, false);
}
