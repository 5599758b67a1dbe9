#include "print/mail/mail_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"
#include "db/tables/patient_text.h"
#include "print/mail/mail_text.h"

#include <QStringList>
#include <algorithm>
#include <functional>
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

/// Asks for the rows chunk by chunk; `take` gets each answer and the rows it is about.
short iReadChunks(cT_ADODB &db, Rows rows, QString (*sql)(Rows),
                  const std::function<void(const Recordset &, Rows)> &take) {
    for (size_t from = 0; from < rows.size(); from += chunk) {
        const Rows some = rows.subspan(from, std::min(chunk, rows.size() - from));
        Recordset found;
        if (db.iOpenRecSet(found, sql(some)) != 0)
            return -1;
        take(found, some);
    }
    return 0;
}

Counsellor counsellorAt(const Recordset &rows, int row, int column) {
    return {qint32(rows.number(row, column)), rows.text(row, column + 1), rows.text(row, column + 2)};
}

} // namespace

QString MailRow::who() const {
    return patientText(patient.nIDNo, onOneLine(name));
}

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
    return iReadChunks(db, rows, sqlPatientCounsellors, [&](const Recordset &found, Rows) {
        for (int row = 0; row < found.rowCount(); ++row)
            counsellors.push_back({patientAt(found, row), counsellorAt(found, row, 3)});
    });
}
