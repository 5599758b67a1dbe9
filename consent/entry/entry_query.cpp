#include "consent/entry/entry_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

Result<std::optional<EntryPatient>> readEntryPatient(cT_ADODB &db, const PatientKey &key) {
    const Result<Recordset> rows = readRows(
        db, u"SELECT cName, iSejutsuKubun, tExpireDay FROM RIYOUSHA WHERE "_s + sqlWhere(key, u"RIYOUSHA"));
    if (!rows)
        return Failure{rows.reason()};
    if (rows->rowCount() == 0)
        return std::optional<EntryPatient>();
    return std::optional(EntryPatient{key, rows->text(0, 0), rows->number(0, 1) != 0, rows->date(0, 2)});
}

Result<std::optional<DoctorData>> readDoctorData(cT_ADODB &db, const QString &code) {
    const Result<Recordset> rows =
        readRows(db, u"SELECT DOCTOR.cName, DOCTOR.cAddress1, SISETSU.cShamei1, DOCTOR.cKikan FROM DOCTOR"
                     " LEFT JOIN SISETSU ON SISETSU.nIDNo = DOCTOR.iSisetsuCode WHERE DOCTOR.cIDno = "_s +
                         sqlText(code));
    if (!rows)
        return Failure{rows.reason()};
    if (rows->rowCount() == 0)
        return std::optional<DoctorData>();
    return std::optional(
        DoctorData{rows->text(0, 0), rows->text(0, 1), rows->text(0, rows->isNull(0, 2) ? 3 : 2)});
}

Result<QString> readDefaultDiagnosis(cT_ADODB &db, const EntryPatient &patient) {
    const QString column = patient.acupuncture ? u"cDouiByoumei2_Def"_s : u"cDouiByoumei1_Def"_s;
    const Result<Recordset> rows = readRows(db, u"SELECT "_s + column + u" FROM CORP_SUB WHERE "_s +
                                                    sqlWhere(patient.key.branch(), u"CORP_SUB"));
    if (!rows)
        return Failure{rows.reason()};
    return rows->rowCount() > 0 ? rows->text(0, 0) : QString();
}
