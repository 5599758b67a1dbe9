#include "consent/rows/given_consents_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype block = 500; // patients a statement: those that the list asks for at a time

Result<> readBlock(cT_ADODB &db, const Branch &branch, const QStringList &patients,
                   std::vector<GivenConsent> &consents) {
    const Result<Recordset> found = readRows(
        db, u"SELECT nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate, tDouiDay, cIsiCd"
            " FROM RIYOUSHA_DOUI_REC WHERE "_s +
                sqlWhere(branch, u"RIYOUSHA_DOUI_REC") + u" AND nIDNo IN ("_s + patients.join(u',') + u")"_s);
    if (!found)
        return Failure{found.reason()};
    for (int row = 0; row < found->rowCount(); ++row)
        consents.push_back({{{branch.iKyotenCd, branch.iKyotenEb, qint32(found->number(row, 0))},
                             qint32(found->number(row, 1)),
                             short(found->number(row, 2)),
                             qint32(found->number(row, 3))},
                            found->date(row, 4),
                            found->text(row, 5)});
    return {};
}

} // namespace

Result<GivenConsents> readGivenConsents(cT_ADODB &db, const Branch &branch,
                                        std::span<const ConsentRowKey> rows) {
    QStringList patients;
    for (const ConsentRowKey &row : rows)
        patients.append(sqlNumber(row.patient.nIDNo));
    patients.removeDuplicates();
    if (patients.isEmpty())
        return GivenConsents();
    std::vector<GivenConsent> consents;
    for (qsizetype from = 0; from < patients.size(); from += block)
        if (const Result<> read = readBlock(db, branch, patients.mid(from, block), consents); !read)
            return Failure{read.reason()};
    return GivenConsents(std::move(consents));
}
