#include "fees/fees_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

using Band = cD_往療費区分;

QString monthOf(QStringView column) {
    return u"SUBSTRING(CONVERT(VARCHAR, %1, 112),1,4)+SUBSTRING(CONVERT(VARCHAR, %1, 112),6,2)"_s.arg(column);
}

bool isSameBand(const Band &a, const Band &b) {
    return a.cStartDate == b.cStartDate && a.nMinLen == b.nMinLen;
}

bool isEqual(const Band &a, const Band &b) {
    return Band::table().literals(a) == Band::table().literals(b);
}

const Band *sameIn(const Bands &bands, const Band &band) {
    const auto found = std::ranges::find_if(bands, [&](const Band &b) { return isSameBand(b, band); });
    return found == bands.end() ? nullptr : &*found;
}

/// Bands that begin at the same distance are written together where they are valid on the first day of one.
bool isInTheWay(const Band &other, const Band &band) {
    return other.nMinLen == band.nMinLen && other.cStartDate < band.cStartDate &&
           other.cEndDate >= band.cStartDate;
}

// The oldest first: where bands overlap, the earlier one is shortened before the later one is written.
Result<> writeBands(cT_往療費区分 &table, const Bands &seen, const Bands &now) {
    for (const Band &old : seen) {
        const Band *band = sameIn(now, old);
        if (band && isEqual(*band, old))
            continue;
        if (std::ranges::any_of(now, [&](const Band &b) { return sameIn(seen, b) && isInTheWay(b, old); }))
            return Failure{
                u"%1 から有効な %L2 m からの区分は、変更も削除もできません。\r\n"
                "同じ距離から始まる前の区分が、この日にも有効です。前の区分の適用終了も直してください。"_s
                    .arg(old.cStartDate)
                    .arg(old.nMinLen)};
        if ((band ? table.iDataUpdate(band, -1, false) : table.iData削除(&old, -1, false)) != 0)
            return Failure{table.sErrMsg()};
    }
    for (const Band &band : now)
        if (!sameIn(seen, band) && table.iDataInsert(&band, -1, false) != 0)
            return Failure{table.sErrMsg()};
    return {};
}

/// The office's own row is there whatever becomes of its bands: two programs that save wait for each other.
QString lockSql(const Branch &office) {
    return u"UPDATE KYOTEN SET cPcName = cPcName WHERE iKyotenCd = "_s + sqlNumber(office.iKyotenCd) +
           u" AND iKyotenEb = "_s + sqlNumber(office.iKyotenEb);
}

} // namespace

Result<Recordset> readInForce(const QString &connectionString, QStringView table, const QString &month,
                              QStringView order) {
    cT_ADODB db;
    db.iInit(connectionString);
    const QString sql = u"SELECT * FROM "_s + table.toString() + u" WHERE "_s + monthOf(u"cStartDate") +
                        u" <=   "_s + sqlText(month) + u" AND "_s + monthOf(u"cEndDate") + u" >=   "_s +
                        sqlText(month) + u" ORDER BY "_s + order.toString();
    return readRows(db, sql);
}

bool sameBands(const Bands &a, const Bands &b) {
    return std::ranges::equal(a, b, isEqual);
}

Result<Bands> readBands(cT_ADODB &db, const Branch &office) {
    const ErrorsSince errors(db);
    cT_往療費区分 table;
    table.iInit(db, office);
    if (db.iConnect() != 0 || table.iDataReadGrid() != 0)
        return Failure{errors.text()};
    return table.records();
}

static Result<bool> saveOnce(cT_ADODB &db, const Branch &office, const Bands &seen, const Bands &now) {
    const ErrorsSince errors(db);
    if (db.iConnect() != 0)
        return Failure{errors.text()};
    Transaction transaction(db);
    if (!transaction.begun() || db.iExecSQL(lockSql(office)) != 0)
        return Failure{errors.text()};
    const Result<Bands> stored = readBands(db, office);
    if (!stored)
        return Failure{stored.reason()};
    if (!sameBands(*stored, seen))
        return false;
    cT_往療費区分 table;
    table.iInit(db, office);
    if (const Result<> written = writeBands(table, seen, now); !written)
        return Failure{written.reason()};
    if (transaction.commit() != 0)
        return Failure{errors.text()};
    return true;
}

Result<bool> saveBands(cT_ADODB &db, const Branch &office, const Bands &seen, const Bands &now) {
    return againAfterDeadlock(db, [&] { return saveOnce(db, office, seen, now); });
}
