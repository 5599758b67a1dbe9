#include "consent/entry/entry_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

RowRead readOne(cT_ADODB &db, const QString &sql, Recordset &rows) {
    if (db.iOpenRecSet(rows, sql) != 0)
        return RowRead::Failed;
    return rows.rowCount() > 0 ? RowRead::Found : RowRead::Absent;
}

} // namespace

RowRead readEntryPatient(cT_ADODB &db, const PatientKey &key, EntryPatient &patient) {
    Recordset rows;
    const RowRead read = readOne(
        db, u"SELECT cName, iSejutsuKubun, tExpireDay FROM RIYOUSHA WHERE "_s + sqlWhere(key, u"RIYOUSHA"),
        rows);
    if (read == RowRead::Found)
        patient = {key, rows.text(0, 0), rows.number(0, 1) != 0, rows.date(0, 2)};
    return read;
}

RowRead readDoctorData(cT_ADODB &db, const QString &code, DoctorData &doctor) {
    Recordset rows;
    const RowRead read =
        readOne(db,
                u"SELECT DOCTOR.cName, DOCTOR.cAddress1, SISETSU.cShamei1, DOCTOR.cKikan FROM DOCTOR"
                " LEFT JOIN SISETSU ON SISETSU.nIDNo = DOCTOR.iSisetsuCode WHERE DOCTOR.cIDno = "_s +
                    sqlText(code),
                rows);
    if (read == RowRead::Found)
        doctor = {rows.text(0, 0), rows.text(0, 1), rows.text(0, rows.isNull(0, 2) ? 3 : 2)};
    return read;
}

short readDefaultDiagnosis(cT_ADODB &db, const EntryPatient &patient, QString &diagnosis) {
    const QString column = patient.acupuncture ? u"cDouiByoumei2_Def"_s : u"cDouiByoumei1_Def"_s;
    Recordset rows;
    const RowRead read = readOne(
        db, u"SELECT "_s + column + u" FROM CORP_SUB WHERE "_s + sqlWhere(patient.key.branch(), u"CORP_SUB"),
        rows);
    if (read == RowRead::Failed)
        return -1;
    diagnosis = read == RowRead::Found ? rows.text(0, 0) : QString();
    return 0;
}
