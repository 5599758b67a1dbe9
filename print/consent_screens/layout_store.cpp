#include "print/consent_screens/layout_store.h"

#include "db/adodb.h"
#include "db/tables/masters/corp_sub.h"
#include "db/tables/patient/riyousha_sub.h"
#include "print/consent_screens/consent_screens_query.h"

namespace {

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
Result<bool> store(cT_ADODB &db, const QString &lock, const Key &of, const ConsentLayoutSettings &seen,
                   const ConsentLayoutSettings &settings, bool mayInsert) {
    auto record = keyOf(of);
    const ErrorsSince before(db);
    TableClass table;
    if (db.iConnect() != 0 || table.iInit(db) != 0)
        return Failure{before.text()};
    Transaction transaction(db);
    if (!transaction.begun() || db.iExecSQL(lock) != 0 || table.iDataRead(&record) != 0)
        return Failure{before.text()};
    const bool there = table.nデータ数() > 0;
    if (there)
        record = table.records().front();
    if (!record.ConsentLayoutSettings::same(seen) || (!there && !mayInsert))
        return false;
    static_cast<ConsentLayoutSettings &>(record) = settings;
    const short written =
        there ? table.iDataUpdate(&record, -1, false) : table.iDataInsert(&record, -1, false);
    if (written != 0 || transaction.commit() != 0)
        return Failure{before.text()};
    return true;
}

} // namespace

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
    return store<cT_CORP_SUB>(db, lockCompanySql(branch), branch, seen, settings, true);
}

Result<bool> storePatientLayouts(cT_ADODB &db, const PatientKey &patient, const ConsentLayoutSettings &seen,
                                 const ConsentLayoutSettings &settings) {
    return store<cT_RIYOUSHA_SUB>(db, lockPatientSql(patient), patient, seen, settings, false);
}
