#include "print/request_letter/letter_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QMultiHash>
#include <QStringList>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString joined(const QString &first, const QString &second) {
    return first.isEmpty() || second.isEmpty() ? first + second : first + u"　"_s + second;
}

QString inList(QStringList values) {
    values.sort();
    values.removeDuplicates();
    return u" IN ("_s + values.join(u',') + u")"_s;
}

/// What the letters read of a consent row.
const QStringList consentColumns{u"iKyotenCd"_s,
                                 u"iKyotenEb"_s,
                                 u"nIDNo"_s,
                                 u"nDate"_s,
                                 u"iHenkeiFlg"_s,
                                 u"nHenkeiDouiDate"_s,
                                 u"tUpDateTime"_s,
                                 u"tDouiKaryoS"_s,
                                 u"tDouiKaryoE"_s,
                                 u"tSaiDouiDay"_s,
                                 u"tDouiDayTempHenkei"_s,
                                 u"cDouiByoumei"_s,
                                 u"cByoumeiM"_s,
                                 u"cByoumeiH"_s,
                                 u"cSyoujyouSonotaStr"_s,
                                 u"iHKSyobyou01Flg"_s,
                                 u"iHKSyobyou02Flg"_s,
                                 u"iHKSyobyou03Flg"_s,
                                 u"iHKSyobyou04Flg"_s,
                                 u"iHKSyobyou05Flg"_s,
                                 u"iHKSyobyou06Flg"_s,
                                 u"iHKSyobyou07Flg"_s,
                                 u"cIsiCd"_s,
                                 u"cDouiIsiName"_s,
                                 u"cDouiIsiKikan"_s,
                                 u"cDouiIsiAdd"_s};

QString rowsSql(const Branch &branch, std::span<const LetterOrder> orders) {
    QString joins, names;
    for (int i = 1; i <= LetterRow::practitioners; ++i) {
        const QString alias = u"STAFF%1"_s.arg(i);
        joins += u" LEFT JOIN STAFF AS %1 ON %1.nIDNo = RIYOUSHA.nTantou%2 AND "_s.arg(
                     alias, i == 1 ? QString() : QString::number(i)) +
                 sqlSameBranch(alias, u"RIYOUSHA");
        names += u", %1.cName AS Staff%2"_s.arg(alias).arg(i);
    }
    QStringList patients, dates;
    for (const LetterOrder &order : orders) {
        patients.append(sqlNumber(order.row.patient.nIDNo));
        dates.append(sqlNumber(order.row.nDate));
    }
    const QString table = u"RIYOUSHA_DOUI_REC"_s;
    // Lists of numbers and not one condition a row: how long they are is not limited as the depth of an
    // expression is.
    return u"SELECT "_s + table + u"."_s + consentColumns.join(u", "_s + table + u"."_s) +
           u", RIYOUSHA.cName AS PatientName, RIYOUSHA.tBirthday AS Birthday,"
           " RIYOUSHA.cAdress1 AS Address1, RIYOUSHA.cAdress2 AS Address2,"
           " RIYOUSHA.tSyoryoDay AS FirstTreatment, RIYOUSHA.iSexKubun AS Sex,"
           " RIYOUSHA.iSejutsuKubun AS Kind"_s +
           names + u" FROM RIYOUSHA_DOUI_REC INNER JOIN RIYOUSHA ON "_s + sqlSamePatient(table, u"RIYOUSHA") +
           joins + u" WHERE "_s + sqlWhere(branch, table) +
           u" AND RIYOUSHA_DOUI_REC.iNewestFlg = 1 AND RIYOUSHA_DOUI_REC.nIDNo"_s + inList(patients) +
           u" AND RIYOUSHA_DOUI_REC.nDate"_s + inList(dates);
}

/// The cells of a recordset by name, each column looked up once.
class Cells {
public:
    explicit Cells(const Recordset &rows) : m_rows(rows) {
        for (int column = 0; column < rows.columnCount(); ++column)
            m_columns.insert(rows.columns()[column].toLower(), column);
    }
    QString text(int row, const QString &name) const { return m_rows.text(row, at(name)); }
    int number(int row, const QString &name) const { return int(m_rows.number(row, at(name))); }
    QDate date(int row, const QString &name) const { return m_rows.date(row, at(name)); }

private:
    int at(const QString &name) const { return m_columns.value(name.toLower()); }

    const Recordset &m_rows;
    QHash<QString, int> m_columns;
};

LetterRow readRow(const Cells &cells, int row) {
    const auto text = [&](const QString &column) { return cells.text(row, column); };
    const auto number = [&](const QString &column) { return cells.number(row, column); };
    const auto date = [&](const QString &column) { return cells.date(row, column); };
    LetterRow result;
    result.key = {{short(number(u"iKyotenCd"_s)), short(number(u"iKyotenEb"_s)), number(u"nIDNo"_s)},
                  number(u"nDate"_s),
                  short(number(u"iHenkeiFlg"_s)),
                  number(u"nHenkeiDouiDate"_s)};
    result.updateTime = text(u"tUpDateTime"_s);
    result.name = text(u"PatientName"_s);
    result.address = joined(text(u"Address1"_s), text(u"Address2"_s));
    result.birthday = date(u"Birthday"_s);
    result.firstTreatment = date(u"FirstTreatment"_s);
    result.sex = number(u"Sex"_s);
    result.acupuncture = number(u"Kind"_s) != 0;
    result.period = {date(u"tDouiKaryoS"_s), date(u"tDouiKaryoE"_s)};
    result.reconsent = date(result.key.iHenkeiFlg == 1 ? u"tDouiDayTempHenkei"_s : u"tSaiDouiDay"_s);
    result.diagnosis = text(u"cDouiByoumei"_s);
    result.massageDiagnosis = text(u"cByoumeiM"_s);
    result.acupunctureDiagnosis = text(u"cByoumeiH"_s);
    result.otherDisease = text(u"cSyoujyouSonotaStr"_s);
    for (size_t i = 0; i < result.diseases.size(); ++i)
        result.diseases[i] = number(u"iHKSyobyou0%1Flg"_s.arg(i + 1)) == 1;
    result.doctor = text(u"cIsiCd"_s);
    result.doctorName = text(u"cDouiIsiName"_s);
    result.institution = text(u"cDouiIsiKikan"_s);
    result.institutionAddress = text(u"cDouiIsiAdd"_s);
    for (size_t i = 0; i < result.staff.size(); ++i)
        result.staff[i] = text(u"Staff%1"_s.arg(i + 1));
    return result;
}

// The institution's own row counts before what the doctor's row repeats of it.
QString doctorsSql(const QStringList &codes) {
    return u"SELECT DOCTOR.cIDNo, DOCTOR.cName, DOCTOR.cKikan, DOCTOR.cYubinNo AS DoctorZip,"
           " DOCTOR.cAddress1 AS DoctorAddress1, DOCTOR.cAddress2 AS DoctorAddress2, SISETSU.cShamei1,"
           " SISETSU.cYubinNo, SISETSU.cAddress1, SISETSU.cAddress2"
           " FROM DOCTOR LEFT JOIN SISETSU ON SISETSU.nIDNo = DOCTOR.iSisetsuCode WHERE DOCTOR.cIDNo"_s +
           inList(codes);
}

LetterDoctor readDoctor(const Cells &cells, int row) {
    const auto text = [&](const QString &column) { return cells.text(row, column); };
    const QString institution = text(u"cShamei1"_s);
    const QString address = joined(text(u"cAddress1"_s), text(u"cAddress2"_s));
    const bool own = address.isEmpty();
    return {text(u"cName"_s), institution.isEmpty() ? text(u"cKikan"_s) : institution,
            text(own ? u"DoctorZip"_s : u"cYubinNo"_s),
            own ? joined(text(u"DoctorAddress1"_s), text(u"DoctorAddress2"_s)) : address};
}

// The branch's own company, else the head office.
QString companySql(const Branch &branch) {
    return u"SELECT TOP 1 cShamei1, cShamei2, cAddress1, cAddress2, cTelNo, cFaxNo, cDaihyo FROM CORP WHERE ("_s +
           sqlWhere(branch, u"CORP") + u") OR CORP.iType = 0 ORDER BY CASE WHEN "_s +
           sqlWhere(branch, u"CORP") + u" THEN 0 ELSE 1 END, CORP.nIDNo"_s;
}

short readRows(cT_ADODB &db, const Branch &branch, std::span<const LetterOrder> orders,
               std::vector<LetterRow> &found) {
    Recordset rows;
    if (db.iOpenRecSet(rows, rowsSql(branch, orders)) != 0)
        return -1;
    const Cells cells(rows);
    std::vector<LetterRow> all;
    for (int row = 0; row < rows.rowCount(); ++row)
        all.push_back(readRow(cells, row));
    QMultiHash<qint32, size_t> places; // by patient
    for (size_t i = 0; i < all.size(); ++i)
        places.insert(all[i].key.patient.nIDNo, i);
    for (size_t order = 0; order < orders.size(); ++order) {
        const auto [first, end] = places.equal_range(orders[order].row.patient.nIDNo);
        const auto place =
            std::find_if(first, end, [&](size_t i) { return all[i].key == orders[order].row; });
        if (place == end)
            continue;
        found.push_back(all[*place]);
        found.back().order = order;
    }
    return 0;
}

} // namespace

short readLetterSource(cT_ADODB &db, const Branch &branch, std::span<const LetterOrder> orders,
                       LetterSource &source) {
    source = {};
    Recordset company;
    if (db.iConnect() != 0 || readRows(db, branch, orders, source.rows) != 0 ||
        db.iOpenRecSet(company, companySql(branch)) != 0)
        return -1;
    source.hasCompany = company.rowCount() > 0;
    if (source.hasCompany)
        source.company = {joined(company.text(0, 0), company.text(0, 1)),
                          joined(company.text(0, 2), company.text(0, 3)), company.text(0, 4),
                          company.text(0, 5), company.text(0, 6)};
    QStringList codes;
    for (const LetterRow &row : source.rows)
        codes.append(row.doctor);
    for (const LetterOrder &order : orders)
        codes.append(order.doctor);
    return readLetterDoctors(db, codes, source.doctors);
}

short readLetterDoctors(cT_ADODB &db, QStringList codes, QHash<QString, LetterDoctor> &doctors) {
    codes.removeAll(QString());
    if (codes.isEmpty())
        return 0;
    for (QString &code : codes)
        code = sqlText(code);
    Recordset rows;
    if (db.iConnect() != 0 || db.iOpenRecSet(rows, doctorsSql(codes)) != 0)
        return -1;
    const Cells cells(rows);
    for (int row = 0; row < rows.rowCount(); ++row)
        doctors.insert(rows.text(row, 0), readDoctor(cells, row));
    return 0;
}

QString markOutputSql(const LetterRow &row, bool toHospital, const QString &computer) {
    return u"UPDATE RIYOUSHA_DOUI_REC SET "_s +
           (row.key.iHenkeiFlg == 1 ? u"iOutputFlgHenkei = 1, "_s : u"iOutputFlg = 1, "_s) +
           (toHospital ? u"iDouiHospOutFlg = 1"_s : u"iDouiIsiOutFlg = 1"_s) + u", cPcName = "_s +
           sqlText(computer) + u", tUpDateTime = GetDate() WHERE "_s + sqlWhere(row.key) +
           u" AND iNewestFlg = 1"_s;
}

QString sqlUnchanged(const LetterRow &row) {
    return row.updateTime.isEmpty() ? u"tUpDateTime IS NULL"_s
                                    : u"tUpDateTime = "_s + sqlText(row.updateTime);
}
