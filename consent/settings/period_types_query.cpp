#include "consent/settings/period_types_query.h"

#include "app/base/settings.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"
#include "db/tables/patient_text.h"
#include "history/logged_transaction.h"

#include <QHash>
#include <algorithm>
#include <map>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Servers take long over longer lists.
constexpr size_t mostListed = 300;

// Of each patient's latest month the first row, as periods are reckoned by it.
QString sqlPatientTypes(const Branch &branch) {
    const QString where = sqlWhere(branch, u"DOUIKIROKU");
    return u"SELECT DOUIKIROKU.nIDNo,cName,DOUIKIROKU.iDoui1CalcType,DOUIKIROKU.iDoui2CalcType,"
           "DOUIKIROKU.iKikanCalcType FROM DOUIKIROKU INNER JOIN RIYOUSHA ON "_s +
           sqlSamePatient(u"DOUIKIROKU", u"RIYOUSHA") +
           u" INNER JOIN (SELECT nIDNo, MAX(tDouiYM) AS tLastYM FROM DOUIKIROKU WHERE "_s + where +
           u" GROUP BY nIDNo) AS LATEST ON DOUIKIROKU.nIDNo = LATEST.nIDNo and DOUIKIROKU.tDouiYM ="
           " LATEST.tLastYM WHERE "_s +
           where + u" ORDER BY DOUIKIROKU.nIDNo, DOUIKIROKU.iDouiNo"_s;
}

QString typeText(const Recordset &rows, int row, int column) {
    const qint64 type = rows.isNull(row, column) ? 0 : rows.number(row, column);
    return type == 0 ? QString() : QString::number(type);
}

QString typeValue(const QString &text) {
    return text.isEmpty() ? u"Null"_s : sqlText(text);
}

/// Conditions of the patients' months, each of a few hundred patients.
QStringList monthsOf(const Branch &branch, const std::vector<qint32> &patients) {
    QStringList conditions;
    for (size_t first = 0; first < patients.size(); first += mostListed) {
        const size_t last = std::min(first + mostListed, patients.size());
        const std::set<qint32> some(patients.begin() + qsizetype(first), patients.begin() + qsizetype(last));
        conditions += sqlWhere(branch, u"DOUIKIROKU") + sqlAndAmong(u"DOUIKIROKU.nIDNo", some);
    }
    return conditions;
}

Result<> update(cT_ADODB &db, const Branch &branch, const QString &set, const std::vector<qint32> &patients) {
    const ErrorsSince errors(db);
    for (const QString &months : monthsOf(branch, patients))
        if (db.iExecSQL(u"UPDATE DOUIKIROKU SET "_s + set + u" WHERE "_s + months) != 0)
            return Failure{errors.text()};
    return {};
}

QStringList overtakenOf(const std::vector<PatientTypes> &changed, const std::vector<PatientTypes> &standing) {
    QHash<qint32, const PatientTypes *> now;
    for (const PatientTypes &patient : standing)
        now.insert(patient.nIDNo, &patient);
    QStringList names;
    for (const PatientTypes &patient : changed)
        if (const PatientTypes *found = now.value(patient.nIDNo); !found || found->read != patient.read)
            names.append(patientText(patient.nIDNo, patient.cName));
    return names;
}

/// All patients with the same new types go together.
Result<> write(cT_ADODB &db, const Branch &branch, const std::vector<PatientTypes> &changed) {
    std::map<PeriodTypes, std::vector<qint32>> patients;
    for (const PatientTypes &patient : changed)
        patients[patient.now].push_back(patient.nIDNo);
    for (const auto &[types, numbers] : patients) {
        const QString set = u"iDoui1CalcType = %1, iDoui2CalcType = %2, iKikanCalcType = %3"_s.arg(
            typeValue(types[0]), typeValue(types[1]), typeValue(types[2]));
        if (const Result<> updated = update(db, branch, set, numbers); !updated)
            return updated;
    }
    return {};
}

// The file is written before the rows are committed: where it cannot be, they stay; where they cannot be
// committed, it is put back.
Result<> commitWithDefaults(LoggedTransaction &transaction, const Folders &folders, const QString &before,
                            const QString &defaults) {
    Settings settings(folders);
    const bool writesFile = defaults != before;
    if (writesFile && settings.iWrite(Setting::同意書自動計算デフォルト, defaults) != 0)
        return Failure{settings.sErrMsg() + u"\r\n何も保存されていません。"_s};
    const Result<> committed = transaction.commit();
    if (committed)
        return {};
    const QString reason = committed.reason();
    if (!writesFile || settings.iWrite(Setting::同意書自動計算デフォルト, before) == 0)
        return Failure{reason};
    return Failure{reason +
                   u"\r\n利用者の設定は保存されていませんが、既定の設定だけが変更されました。"
                   "もう一度保存してください。\r\n"_s +
                   settings.sErrMsg()};
}

// Nothing changes by the lock, but others who save wait from then on.
Result<QStringList> lockAndCompare(LoggedTransaction &transaction, cT_ADODB &db, const Branch &branch,
                                   const std::vector<PatientTypes> &changed) {
    std::vector<qint32> numbers;
    for (const PatientTypes &patient : changed)
        numbers.push_back(patient.nIDNo);
    if (numbers.empty())
        return QStringList();
    if (const Result<> locked = update(db, branch, u"iKikanCalcType = iKikanCalcType"_s, numbers); !locked)
        return Failure{locked.reason()};
    for (const QString &months : monthsOf(branch, numbers))
        if (const Result<> watched = transaction.watch(u"DOUIKIROKU", months); !watched)
            return Failure{watched.reason()};
    const Result<std::vector<PatientTypes>> standing = readPatientTypes(db, branch);
    if (!standing)
        return Failure{standing.reason()};
    return overtakenOf(changed, *standing);
}

} // namespace

Result<std::vector<PatientTypes>> readPatientTypes(cT_ADODB &db, const Branch &branch) {
    const Result<Recordset> rows = readRows(db, sqlPatientTypes(branch));
    if (!rows)
        return Failure{rows.reason()};
    std::vector<PatientTypes> patients;
    for (int row = 0; row < rows->rowCount(); ++row) {
        const auto number = qint32(rows->number(row, 0));
        if (!patients.empty() && patients.back().nIDNo == number)
            continue;
        const PeriodTypes types{typeText(*rows, row, 2), typeText(*rows, row, 3), typeText(*rows, row, 4)};
        patients.push_back({number, rows->text(row, 1), types, types});
    }
    return patients;
}

static Result<TypesSaved> saveOnce(cT_ADODB &db, const Folders &folders, const Branch &branch,
                                   const PeriodTypeTable &table, const QString &defaults,
                                   const std::vector<PatientTypes> &changed) {
    LoggedTransaction transaction(db, {u"同意管理設定"_s});
    if (!transaction.begun())
        return Failure{transaction.said()};
    const Result<QStringList> overtaken = lockAndCompare(transaction, db, branch, changed);
    if (!overtaken)
        return Failure{overtaken.reason()};
    const bool defaultsOvertaken =
        defaults != table.defaults &&
        Settings(folders).text(Setting::同意書自動計算デフォルト) != table.defaults;
    if (!overtaken->isEmpty() || defaultsOvertaken)
        return TypesSaved{*overtaken, defaultsOvertaken};
    if (const Result<> written = write(db, branch, changed); !written)
        return Failure{written.reason()};
    if (const Result<> done = commitWithDefaults(transaction, folders, table.defaults, defaults); !done)
        return Failure{done.reason()};
    return TypesSaved();
}

Result<TypesSaved> savePeriodTypes(cT_ADODB &db, const Folders &folders, const Branch &branch,
                                   const PeriodTypeTable &table, const QString &defaults) {
    std::vector<PatientTypes> changed;
    std::ranges::copy_if(table.patients, std::back_inserter(changed), &PatientTypes::isChanged);
    return againAfterDeadlock(db, [&] { return saveOnce(db, folders, branch, table, defaults, changed); });
}
