#include "db/tables/masters/visit_fee_band.h"

#include "db/sql_text.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_往療費区分>;

namespace {

using R = cD_往療費区分;

constexpr TableColumn<R> columns[] = {
    {u"cEndDate", &R::cEndDate},
    {u"cStartDate", &R::cStartDate},
    {u"dMaxLen", &R::dMaxLen},
    {u"dMinLen", &R::dMinLen},
    {u"nKingakuOuryou", &R::nKingakuOuryou},
    {u"nKingakuSejyutsu", &R::nKingakuSejyutsu},
    {u"nMaxLen", &R::nMaxLen},
    {u"nMinLen", &R::nMinLen},
};
constexpr TableDefinition<R> definition{u"往療費区分", columns};
constexpr int startDate = 1, minLen = 7; // places among the columns

QString officeCondition(const Branch &office) {
    return u" iKyotenCd = "_s + sqlNumber(office.iKyotenCd) + u" and iKyotenEb = "_s +
           sqlNumber(office.iKyotenEb);
}

} // namespace

const TableDefinition<R> &R::table() {
    return definition;
}

short cT_往療費区分::iInit(cT_ADODB &db, const Branch &office) {
    m_office = office;
    return Table::iInit(db);
}

short cT_往療費区分::iDataRead(const R *key, bool byLength) {
    if (!key)
        return failInvalid();
    const QString day = sqlText(key->cStartDate);
    QString tail =
        u" where     往療費区分.cStartDate <= "_s + day + u" and     往療費区分.cEndDate >= "_s + day;
    if (byLength)
        tail += u" and     往療費区分.nMinLen ="_s + sqlNumber(key->nMinLen);
    return read(tail + u"  ORDER BY      往療費区分.nMinLen"_s);
}

short cT_往療費区分::iDataReadGrid() {
    return read(u" where"_s + officeCondition(m_office) +
                u"  ORDER BY      往療費区分.cStartDate, 往療費区分.nMinLen"_s);
}

QString cT_往療費区分::writingSql(Writing writing, const QStringList &literals) const {
    if (writing == Writing::Insert) {
        TableText withOffice = text();
        for (const QStringView column : {u"iKyotenEb", u"iKyotenCd"})
            withOffice.columns.insert(withOffice.columns.begin(), ColumnText{column, ColumnUse::Value, {}});
        return insertSql(
            withOffice, QStringList{sqlNumber(m_office.iKyotenCd), sqlNumber(m_office.iKyotenEb)} + literals);
    }
    return Table::writingSql(writing, literals) + u"         cStartDate <= "_s + literals[startDate] +
           u"     and cEndDate >= "_s + literals[startDate] + u"     and nMinLen ="_s + literals[minLen] +
           u" and"_s + officeCondition(m_office);
}
