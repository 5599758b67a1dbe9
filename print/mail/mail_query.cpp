#include "print/mail/mail_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"
#include "db/tables/patient_text.h"
#include "print/mail/mail_text.h"

#include <QStringList>
#include <algorithm>
#include <span>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Rows asked for in one statement.
constexpr size_t chunk = 200;

using Rows = std::span<const MailRow>;

constexpr QStringView patientTable = u"RIYOUSHA_SUB";

QString sqlPatientCounsellors(Rows rows) {
    QStringList patients;
    for (const MailRow &row : rows)
        patients.append(u"("_s + sqlWhere(row.patient, patientTable) + u")"_s);
    patients.removeDuplicates();
    return u"SELECT RIYOUSHA_SUB.iKyotenCd, RIYOUSHA_SUB.iKyotenEb, RIYOUSHA_SUB.nIDNo, SOUDAN.nIDNo,"
           " SOUDAN.cName, SOUDAN.cMail1 FROM RIYOUSHA_SUB INNER JOIN SOUDAN ON "_s +
           sqlSameBranch(u"SOUDAN", patientTable) + u" AND SOUDAN.nIDNo = RIYOUSHA_SUB.iSoudaninId WHERE "_s +
           patients.join(u" OR ");
}

PatientKey patientAt(const Recordset &rows, int row) {
    return {short(rows.number(row, 0)), short(rows.number(row, 1)), qint32(rows.number(row, 2))};
}

Counsellor counsellorAt(const Recordset &rows, int row, int column) {
    return {qint32(rows.number(row, column)), rows.text(row, column + 1), rows.text(row, column + 2)};
}

} // namespace

QString MailRow::who() const {
    return patientText(patient.nIDNo, onOneLine(name));
}

Result<std::vector<Counsellor>> readCounsellors(cT_ADODB &db) {
    const Result<Recordset> rows =
        readRows(db, u"SELECT nIDNo, cName, cMail1 FROM SOUDAN WHERE iChusiFlg = 0 ORDER BY nIDNo"_s);
    if (!rows)
        return Failure{rows.reason()};
    std::vector<Counsellor> counsellors;
    for (int row = 0; row < rows->rowCount(); ++row)
        if (const Counsellor read = counsellorAt(*rows, row, 0); !std::ranges::count(counsellors, read))
            counsellors.push_back(read);
    return counsellors;
}

Result<std::vector<PatientCounsellor>> readPatientCounsellors(cT_ADODB &db,
                                                              const std::vector<MailRow> &rows) {
    std::vector<PatientCounsellor> counsellors;
    for (size_t from = 0; from < rows.size(); from += chunk) {
        const Rows some = Rows(rows).subspan(from, std::min(chunk, rows.size() - from));
        const Result<Recordset> found = readRows(db, sqlPatientCounsellors(some));
        if (!found)
            return Failure{found.reason()};
        for (int row = 0; row < found->rowCount(); ++row)
            counsellors.push_back({patientAt(*found, row), counsellorAt(*found, row, 3)});
    }
    return counsellors;
}
