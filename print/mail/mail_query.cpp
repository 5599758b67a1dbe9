#include "print/mail/mail_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QStringList>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Patients asked for in one statement.
constexpr size_t chunk = 200;

constexpr QStringView patientTable = u"RIYOUSHA_SUB";

QString sqlPatientCounsellors(const MailRow *first, const MailRow *last) {
    QStringList patients;
    for (const MailRow *row = first; row != last; ++row)
        patients.append(u"("_s + sqlWhere(row->patient, patientTable) + u")"_s);
    patients.removeDuplicates();
    return u"SELECT RIYOUSHA_SUB.iKyotenCd, RIYOUSHA_SUB.iKyotenEb, RIYOUSHA_SUB.nIDNo, SOUDAN.nIDNo,"
           " SOUDAN.cName, SOUDAN.cMail1 FROM RIYOUSHA_SUB INNER JOIN SOUDAN ON "_s +
           sqlSameBranch(u"SOUDAN", patientTable) + u" AND SOUDAN.nIDNo = RIYOUSHA_SUB.iSoudaninId WHERE "_s +
           patients.join(u" OR ");
}

Counsellor counsellorAt(const Recordset &rows, int row, int column) {
    return {qint32(rows.number(row, column)), rows.text(row, column + 1), rows.text(row, column + 2)};
}

} // namespace

short iReadCounsellors(cT_ADODB &db, std::vector<Counsellor> &counsellors) {
    Recordset rows;
    if (db.iOpenRecSet(rows, u"  SELECT nIDNo,cName,cMail1 FROM SOUDAN WHERE iChusiFlg=0 ORDER BY nIDNo"_s) !=
        0)
        return -1;
    counsellors.clear();
    for (int row = 0; row < rows.rowCount(); ++row)
        if (const Counsellor read = counsellorAt(rows, row, 0); !std::ranges::count(counsellors, read))
            counsellors.push_back(read);
    return 0;
}

short iReadPatientCounsellors(cT_ADODB &db, const std::vector<MailRow> &rows,
                              std::vector<PatientCounsellor> &counsellors) {
    counsellors.clear();
    for (size_t from = 0; from < rows.size(); from += chunk) {
        const MailRow *const first = rows.data() + from;
        Recordset found;
        if (db.iOpenRecSet(found,
                           sqlPatientCounsellors(first, first + std::min(chunk, rows.size() - from))) != 0)
            return -1;
        for (int row = 0; row < found.rowCount(); ++row)
            counsellors.push_back(
                {{short(found.number(row, 0)), short(found.number(row, 1)), qint32(found.number(row, 2))},
                 counsellorAt(found, row, 3)});
    }
    return 0;
}

short iMarkSent(cT_ADODB &db, const MailRow &row, bool &found) {
    qint64 affected = 0;
    const short status =
        db.iExecSQL(u"UPDATE RIYOUSHA_DOUI_REC SET iSendFlg = 1 WHERE "_s + sqlWhere(row.patient, {}) +
                        u" AND nDate = "_s + sqlNumber(row.nDate),
                    &affected);
    found = affected > 0;
    return status;
}
