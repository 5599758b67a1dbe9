#include "consent/rules/rules_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

/// With more patients than this the whole branch is asked for: servers take long over long lists.
constexpr size_t mostListed = 300;

QString ofPatients(const Branch &branch, const std::vector<qint32> &patients) {
    const QString where = sqlWhere(branch, u"DOUIKIROKU");
    if (patients.size() > mostListed)
        return where;
    QStringList numbers;
    for (const qint32 patient : patients)
        numbers.append(sqlNumber(patient));
    return where + u" and DOUIKIROKU.nIDNo IN ("_s + numbers.join(u',') + u')';
}

// Of each patient's latest month all rows, the first one first.
QString sqlLatestMonths(const Branch &branch, const std::vector<qint32> &patients) {
    const QString where = ofPatients(branch, patients);
    return u"SELECT DOUIKIROKU.nIDNo, iDouiKikan1, iDouiKikan2, iDoui1CalcType, iKikanCalcType FROM "
           u"DOUIKIROKU"
           " INNER JOIN (SELECT nIDNo, MAX(tDouiYM) AS tLastYM FROM DOUIKIROKU WHERE "_s +
           where +
           u" GROUP BY nIDNo) AS LATEST ON DOUIKIROKU.nIDNo = LATEST.nIDNo and DOUIKIROKU.tDouiYM ="
           " LATEST.tLastYM WHERE "_s +
           where + u" ORDER BY DOUIKIROKU.nIDNo, iDouiNo"_s;
}

} // namespace

Result<Holidays> readHolidays(cT_ADODB &db, const Branch &branch) {
    const Result<Recordset> rows =
        readRows(db, u"SELECT iYear, iMonth, iDay FROM HOLIDAY WHERE "_s + sqlWhere(branch, u"HOLIDAY") +
                         u" and iChkCalendar <> 0"_s);
    if (!rows)
        return Failure{rows.reason()};
    std::vector<QDate> days;
    days.reserve(size_t(rows->rowCount()));
    for (int row = 0; row < rows->rowCount(); ++row)
        days.emplace_back(int(rows->number(row, 0)), int(rows->number(row, 1)), int(rows->number(row, 2)));
    return Holidays(std::move(days));
}

Result<QHash<qint32, PeriodSettings>> readPeriodSettings(cT_ADODB &db, const Branch &branch,
                                                         const std::vector<qint32> &patients) {
    QHash<qint32, PeriodSettings> settings;
    if (patients.empty())
        return settings;
    const Result<Recordset> rows = readRows(db, sqlLatestMonths(branch, patients));
    if (!rows)
        return Failure{rows.reason()};
    for (int row = 0; row < rows->rowCount(); ++row) {
        const auto patient = qint32(rows->number(row, 0));
        const auto number = [&](int column) { return cT_ADODB::iNull(*rows, row, column); };
        if (!settings.contains(patient))
            settings.insert(patient, {number(1), number(2), number(3), number(4)});
    }
    for (const qint32 patient : patients)
        if (!settings.contains(patient))
            settings.insert(patient, {});
    return settings;
}

Result<int> readUpdateReferenceDay(cT_ADODB &db, const Branch &branch) {
    const Result<Recordset> rows =
        readRows(db, u"SELECT iDouiUpdatePermitDay FROM CORP_SUB WHERE "_s + sqlWhere(branch, u"CORP_SUB"));
    if (!rows)
        return Failure{rows.reason()};
    return rows->rowCount() == 0 ? 0 : int(cT_ADODB::iNull(*rows, 0, 0));
}
