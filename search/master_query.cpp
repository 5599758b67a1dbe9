#include "search/master_query.h"

#include "db/sql_text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the statements of one master are made of.
struct Source {
    QString codeColumn;
    bool codeIsText = false;
    QString columns; ///< beside the code
    QString from;
    QString where;   ///< empty: all rows
    QString orderBy; ///< the code, where its column does not sort as a number
};

/// Which patient lives where, each pair once.
QString addresses() {
    QStringList all;
    for (const QString &column : {u"iAddressSisetsuCd"_s, u"iAddressSisetsuCd2"_s, u"iAddressSisetsuCd3"_s})
        all += u"SELECT iKyotenCd, iKyotenEb, nIDNo, "_s + column + u" AS nSisetsu FROM RIYOUSHA_SUB"_s;
    return all.join(u" UNION "_s);
}

Source sourceOf(Master master, const Branch &office) {
    const QString facility =
        u"SISETSU.cShamei1 AS name, SISETSU.cShameiKana1 AS kana, "
        "SISETSU.cSisetsuType AS kind, SISETSU.cAddress1 AS address, SISETSU.cTelNo AS tel"_s;
    const QString hasDoctor = u"EXISTS (SELECT 1 FROM DOCTOR WHERE DOCTOR.iSisetsuCode = SISETSU.nIDNo)"_s;
    switch (master) {
    case Master::Doctor:
        return {
            u"DOCTOR.cIDno"_s,
            true,
            u"DOCTOR.cName AS name, DOCTOR.cNameKana AS kana, DOCTOR.cKikan AS kikan, DOCTOR.cTelNo AS tel"_s,
            u"DOCTOR"_s,
            {},
            u"CAST(DOCTOR.cIDno AS NUMERIC(10))"_s};
    case Master::Hospital:
        // A hospital without a doctor would filter every consent away.
        return {u"SISETSU.nIDNo"_s, false, facility, u"SISETSU"_s, hasDoctor, u"SISETSU.nIDNo"_s};
    case Master::LivingFacility:
        // Nothing in a row tells a home from a clinic.
        return {u"SISETSU.nIDNo"_s,
                false,
                facility + u", HOME.nPatients AS patients"_s,
                u"SISETSU LEFT JOIN (SELECT nSisetsu, COUNT(*) AS nPatients FROM ("_s + addresses() +
                    u") AS ADDRESSES GROUP BY nSisetsu) AS HOME ON HOME.nSisetsu = SISETSU.nIDNo"_s,
                u"(HOME.nPatients IS NOT NULL OR NOT "_s + hasDoctor + u")"_s,
                u"CASE WHEN HOME.nPatients IS NULL THEN 1 ELSE 0 END, SISETSU.nIDNo"_s};
    case Master::Facility:
        return {u"SISETSU.nIDNo"_s, false, facility, u"SISETSU"_s, {}, u"SISETSU.nIDNo"_s};
    case Master::Insurer:
        return {u"HOKENJA.cHokenNo"_s,
                true,
                u"HOKENJA.cHokenJName AS name, HOKENJA.cHokenJNameKana AS kana, "
                "HOKENJA.cAddress1 AS address, HOKENJA.cTelNo AS tel"_s,
                u"HOKENJA"_s,
                {},
                u"HOKENJA.cHokenNo"_s};
    case Master::Counsellor:
        break;
    }
    return {u"SOUDAN.nIDNo"_s,
            false,
            u"SOUDAN.cName AS name, SOUDAN.cNameKana AS kana, SISETSU.cShamei1 AS facility, "
            "SOUDAN.cTelNo AS tel"_s,
            u"SOUDAN LEFT JOIN SISETSU ON SISETSU.nIDNo = SOUDAN.nSisetsuCode"_s,
            u"SOUDAN.iKyotenCd = "_s + sqlNumber(office.iKyotenCd) + u" AND SOUDAN.iKyotenEb = "_s +
                sqlNumber(office.iKyotenEb),
            u"SOUDAN.nIDNo"_s};
}

QString select(const Source &source, const QString &where) {
    QString sql =
        u"SELECT "_s + source.codeColumn + u" AS code, "_s + source.columns + u" FROM "_s + source.from;
    if (!where.isEmpty())
        sql += u" WHERE "_s + where;
    return sql;
}

} // namespace

QString masterListSql(Master master, const Branch &office) {
    const Source source = sourceOf(master, office);
    return select(source, source.where) + u" ORDER BY "_s + source.orderBy;
}

QString masterRowSql(Master master, const Branch &office, const QString &code) {
    const Source source = sourceOf(master, office);
    const QString one =
        source.codeColumn + u" = "_s + (source.codeIsText ? sqlText(code) : sqlNumber(code.toLongLong()));
    return select(source, source.where.isEmpty() ? one : source.where + u" AND "_s + one);
}
