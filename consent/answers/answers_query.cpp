#include "consent/answers/answers_query.h"

#include "consent/rows/list_query.h"
#include "db/adodb.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

enum class Column {
    Number,
    Name,
    Kana,
    Kind,
    Ended,
    Outcome,
    Deformity,
    End,
    Requested,
    Received,
    RequestedDeformity,
    ReceivedDeformity
};

QString patientsSql(const Branch &branch) {
    return u"SELECT RIYOUSHA.nIDNo, RIYOUSHA.cName, RIYOUSHA.cNameKana, RIYOUSHA.iSejutsuKubun,"
           " RIYOUSHA.tExpireDay, RIYOUSHA.iTenki, RIYOUSHA_DOUI_REC.iHenkeiFlg,"
           " RIYOUSHA_DOUI_REC.tDouiKaryoE, RIYOUSHA_DOUI_REC.iOutputFlg, RIYOUSHA_DOUI_REC.iGetFlg,"
           " RIYOUSHA_DOUI_REC.iOutputFlgHenkei, RIYOUSHA_DOUI_REC.iGetFlgHenkei"
           " FROM RIYOUSHA LEFT JOIN RIYOUSHA_DOUI_REC ON "_s +
           sqlSamePatient(u"RIYOUSHA", u"RIYOUSHA_DOUI_REC") +
           u" AND RIYOUSHA_DOUI_REC.iNewestFlg = 1 WHERE "_s + sqlWhere(branch, u"RIYOUSHA") +
           u" ORDER BY RIYOUSHA.cNameKana, RIYOUSHA.nIDNo, RIYOUSHA_DOUI_REC.iHenkeiFlg"_s;
}

} // namespace

Result<AnswerPatients> readAnswerPatients(cT_ADODB &db, const Branch &branch) {
    using C = Column;
    Result<Recordset> found = readRows(db, patientsSql(branch));
    if (!found)
        return Failure{found.reason()};
    const FieldRows<Column> rows(std::move(*found));
    std::vector<AnswerPatient> patients;
    for (int row = 0; row < rows.count(); ++row) {
        const auto number = qint32(rows.number(row, C::Number));
        if (patients.empty() || patients.back().number != number)
            patients.push_back({number, rows.text(row, C::Name), rows.text(row, C::Kana),
                                TreatmentKind(rows.flag(row, C::Kind)), rows.date(row, C::Ended),
                                !isListed(rows.number(row, C::Outcome))});
        // The list shows no consent without an end either.
        if (!rows.date(row, C::End).isValid())
            continue;
        const bool deformity = rows.flag(row, C::Deformity);
        patients.back().consents.push_back({deformity, rows.date(row, C::End),
                                            rows.flag(row, deformity ? C::RequestedDeformity : C::Requested),
                                            rows.flag(row, deformity ? C::ReceivedDeformity : C::Received)});
    }
    return AnswerPatients(std::move(patients));
}

Result<Recordset> readAnswerRows(cT_ADODB &db, const Branch &branch, qint32 patient) {
    ListFilter filter;
    filter.from = QDate(1868, 1, 1);
    filter.to = QDate(9999, 12, 31);
    filter.ended = true;
    filter.patient = patient;
    filter.order = ListOrder::Patient;
    return readRows(db, listSql(branch, filter));
}
