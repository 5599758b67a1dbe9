#include "db/tables/keys_query.h"

#include "db/sql_text.h"

#include <QMap>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A server refuses statements of some ten thousand literals.
constexpr size_t mostNumbers = 1000;

QString qualified(QStringView table, const QString &column) {
    return table.isEmpty() ? column : table.toString() + u'.' + column;
}

QString equals(QStringView table, const QString &column, qint64 number) {
    return qualified(table, column) + u" = "_s + QString::number(number);
}

QString same(QStringView left, QStringView right, const QString &column) {
    return qualified(left, column) + u" = "_s + qualified(right, column);
}

} // namespace

QString sqlWhere(const Branch &branch, QStringView table) {
    return equals(table, u"iKyotenCd"_s, branch.iKyotenCd) + u" and "_s +
           equals(table, u"iKyotenEb"_s, branch.iKyotenEb);
}

QString sqlWhere(const PatientKey &patient, QStringView table) {
    return sqlWhere(patient.branch(), table) + u" and "_s + equals(table, u"nIDNo"_s, patient.nIDNo);
}

QString sqlWhere(const ConsentRowKey &row, QStringView table) {
    return sqlWhere(row.patient, table) + u" and "_s + equals(table, u"nDate"_s, row.nDate) + u" and "_s +
           equals(table, u"iHenkeiFlg"_s, row.iHenkeiFlg) + u" and "_s +
           equals(table, u"nHenkeiDouiDate"_s, row.nHenkeiDouiDate);
}

QString sqlWhere(const std::vector<PatientKey> &patients, QStringView table) {
    QMap<std::pair<short, short>, QStringList> numbers; // by branch
    for (const PatientKey &patient : patients)
        numbers[{patient.iKyotenCd, patient.iKyotenEb}] += QString::number(patient.nIDNo);
    QStringList branches;
    for (auto branch = numbers.cbegin(); branch != numbers.cend(); ++branch)
        branches += sqlWhere(Branch{branch.key().first, branch.key().second}, table) + u" and "_s +
                    qualified(table, u"nIDNo"_s) + u" IN ("_s + branch->join(u", ") + u')';
    return branches.isEmpty() ? u"(1 = 0)"_s : u'(' + branches.join(u" or ") + u')';
}

QString sqlSameBranch(QStringView left, QStringView right) {
    return same(left, right, u"iKyotenCd"_s) + u" and "_s + same(left, right, u"iKyotenEb"_s);
}

QString sqlSamePatient(QStringView left, QStringView right) {
    return sqlSameBranch(left, right) + u" and "_s + same(left, right, u"nIDNo"_s);
}

QString sqlPractitionerJoins() {
    QString joins;
    for (int i = 1; i <= mostPractitioners; ++i) {
        const QString alias = u"STAFF%1"_s.arg(i);
        joins += u" LEFT JOIN STAFF AS %1 ON %1.nIDNo = RIYOUSHA.nTantou%2 AND "_s.arg(
                     alias, i == 1 ? QString() : QString::number(i)) +
                 sqlSameBranch(alias, u"RIYOUSHA");
    }
    return joins;
}

QString sqlIsListed() {
    return u"(RIYOUSHA.iTenki IS NULL OR RIYOUSHA.iTenki NOT IN (1, 3, 15))"_s;
}

bool isListed(qint64 outcome) {
    return outcome != 1 && outcome != 3 && outcome != 15;
}

QString sqlNewestOfKind() {
    return u"RIYOUSHA_DOUI_REC.iNewestFlg = 1"
           " AND NOT EXISTS (SELECT LATER.nDate FROM RIYOUSHA_DOUI_REC AS LATER WHERE "_s +
           sqlSamePatient(u"LATER", u"RIYOUSHA_DOUI_REC") +
           u" AND LATER.iNewestFlg = 1 AND LATER.iHenkeiFlg = RIYOUSHA_DOUI_REC.iHenkeiFlg"
           " AND (LATER.nDate > RIYOUSHA_DOUI_REC.nDate OR LATER.nDate = RIYOUSHA_DOUI_REC.nDate"
           " AND LATER.nHenkeiDouiDate > RIYOUSHA_DOUI_REC.nHenkeiDouiDate))"_s;
}

QString sqlAndAmong(QStringView column, const std::set<qint32> &numbers) {
    if (numbers.size() > mostNumbers)
        return {};
    QStringList list;
    for (const qint32 number : numbers)
        list += QString::number(number);
    return u" AND "_s + column.toString() + u" IN ("_s + list.join(u", "_s) + u')';
}

QString sqlOrderAs(const QString &column, const std::vector<qint32> &numbers) {
    if (numbers.empty())
        return {};
    QString ranks;
    for (size_t rank = 0; rank < numbers.size(); ++rank)
        ranks += u" WHEN "_s + sqlNumber(numbers[rank]) + u" THEN "_s + sqlNumber(qint64(rank));
    return u"CASE "_s + column + ranks + u" ELSE "_s + sqlNumber(qint64(numbers.size())) + u" END"_s;
}
