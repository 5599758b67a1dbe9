#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

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

QString sqlSameBranch(QStringView left, QStringView right) {
    return same(left, right, u"iKyotenCd"_s) + u" and "_s + same(left, right, u"iKyotenEb"_s);
}

QString sqlSamePatient(QStringView left, QStringView right) {
    return sqlSameBranch(left, right) + u" and "_s + same(left, right, u"nIDNo"_s);
}
