#include "tests/consent_form/random_practice.h"

#include "app/base/dates.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString sqlOf(const QString &text) {
    return text.isEmpty() ? u"Null"_s : u'\'' + text + u'\'';
}
QString firstOf(const QStringList &texts) {
    for (const QString &text : texts)
        if (!text.isEmpty())
            return text;
    return {};
}

} // namespace

QString Row::diagnosis() const {
    return u"病名%1の%2%3"_s.arg(patient).arg(date).arg(correction ? u"変"_s : QString());
}

RandomPractice::RandomPractice(unsigned seed) : m_random(seed) {
    fill();
}

void RandomPractice::fill() {
    for (const QString &table :
         {u"RIYOUSHA_DOUI_REC"_s, u"RIYOUSHA"_s, u"RIYOUSHA_SUB"_s, u"DOCTOR"_s, u"SISETSU"_s})
        m_sql += u"delete from "_s + table + u";\n"_s;
    fillMasters();
    const int patients = oneIn(4) ? 90 : 1 + upTo(14);
    for (int number = 1; number <= patients; ++number)
        fillPatient(number);
    m_practice.database.run(u"begin;\n"_s + m_sql + u"commit"_s);
}

void RandomPractice::fillMasters() {
    m_sql += u"update CORP set iType = 0;\n"_s;
    for (int hospital = 1; hospital <= 3; ++hospital)
        m_sql += u"insert into SISETSU (nIDNo, cShamei1, cAddress1) values (%1, '病院%1', '病院町%1');"_s.arg(
            hospital);
    for (int number = 1 + upTo(4); number > 0; --number) {
        Doctor doctor{u"医師%1"_s.arg(m_doctors.size() + 1), {}, {}, upTo(3), oneIn(5)};
        if (oneIn(3))
            doctor.institution = u"医院%1"_s.arg(upTo(2));
        if (oneIn(3))
            doctor.address = u"医院町%1"_s.arg(upTo(2));
        m_doctors.push_back(doctor);
        m_sql += u"insert into DOCTOR (cIDNo, cName, cKikan, cAddress1, iSisetsuCode, iHandWritingFlg)"
                 " values ('%1', %2, %3, %4, %5, %6);"_s.arg(m_doctors.size())
                     .arg(sqlOf(doctor.name), sqlOf(doctor.institution), sqlOf(doctor.address))
                     .arg(doctor.hospital)
                     .arg(int(doctor.writes));
    }
}

void RandomPractice::fillPatient(int number) {
    Patient patient{oneIn(3), oneIn(8), 1 + upTo(1), oneIn(4) ? 0 : 20240101 + 10000 * upTo(3)};
    m_patients.push_back(patient);
    m_sql +=
        u"insert into RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iSejutsuKubun, iTenki,"
        " tSyoryoDay, nTantou) values (1, 1, %1, '%2', 'ｶﾅ%1', %3, %4, %5, %6);\n"_s.arg(number)
            .arg(name(number))
            .arg(int(patient.acupuncture))
            .arg(patient.ended ? u"3"_s : u"Null"_s,
                 patient.firstTreatment ? sqlOf(dateText(dateFromKey(patient.firstTreatment))) : u"Null"_s)
            .arg(patient.staff);
    if (!oneIn(8))
        addRow(number, false, 20260501 + upTo(20), true);
    if (oneIn(3))
        addRow(number, false, 20250501 + upTo(20), oneIn(4)); // the history, or old data
    if (!patient.acupuncture && oneIn(2))
        addRow(number, true, 20261001 + upTo(20), true);
}

void RandomPractice::addRow(int patient, bool correction, int date, bool newest) {
    Row row{patient, date, correction, newest,  oneIn(6), upTo(int(m_doctors.size()) + 1),
            {},      {},   {},         oneIn(2)};
    if (oneIn(2)) {
        row.notedName = u"記録医師%1"_s.arg(upTo(2));
        row.notedInstitution = u"記録医院%1"_s.arg(upTo(2));
    }
    if (oneIn(2))
        row.notedAddress = u"記録町%1"_s.arg(upTo(2));
    m_rows.push_back(row);
    m_sql +=
        u"insert into RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate,"
        " iNewestFlg, iDouiShubetsu, cIsiCd, cDouiIsiName, cDouiIsiKikan, cDouiIsiAdd, cDouiByoumei,"
        " tDouiDay, tDouiKaryoE) values (1, 1, %1, %2, %3, %4, %5, %6, %7, %8, %9);\n"_s.arg(patient)
            .arg(date)
            .arg(int(correction))
            .arg(correction ? date : 0)
            .arg(int(newest))
            .arg(int(row.oral))
            .arg(row.doctor == 0 ? u"Null"_s : sqlOf(QString::number(row.doctor)))
            .arg(QStringList{sqlOf(row.notedName), sqlOf(row.notedInstitution), sqlOf(row.notedAddress)}.join(
                u", "_s))
            .arg(sqlOf(row.diagnosis()) + u", "_s + sqlOf(dateText(dateFromKey(date))) + u", "_s +
                 sqlOf(dateText(dateFromKey(date).addMonths(6))));
}

const Doctor *RandomPractice::doctorOf(const Row &row) const {
    return row.doctor >= 1 && row.doctor <= int(m_doctors.size()) ? &m_doctors[size_t(row.doctor) - 1]
                                                                  : nullptr;
}

QString RandomPractice::doctorName(const Row &row) const {
    const Doctor *doctor = doctorOf(row);
    return firstOf({doctor ? doctor->name : QString(), row.notedName});
}

QString RandomPractice::institution(const Row &row) const {
    const Doctor *doctor = doctorOf(row);
    return firstOf({doctor ? doctor->institution : QString(),
                    doctor && doctor->hospital ? u"病院%1"_s.arg(doctor->hospital) : QString(),
                    row.notedInstitution});
}

QString RandomPractice::address(const Row &row) const {
    const Doctor *doctor = doctorOf(row);
    return firstOf({doctor ? doctor->address : QString(),
                    doctor && doctor->hospital ? u"病院町%1"_s.arg(doctor->hospital) : QString(),
                    row.notedAddress});
}

bool RandomPractice::isLast(const Row &row) const {
    return row.newest && std::ranges::none_of(m_rows, [&](const Row &other) {
               return other.patient == row.patient && other.correction == row.correction && other.newest &&
                      other.date > row.date;
           });
}

const Row *RandomPractice::rowOfDiagnosis(const QString &diagnosis) const {
    const auto found = std::ranges::find(m_rows, diagnosis, &Row::diagnosis);
    return found == m_rows.end() ? nullptr : &*found;
}

bool RandomPractice::isAgain(const Row &row) const {
    const int first = m_patients[size_t(row.patient) - 1].firstTreatment;
    return first != 0 && first < row.date;
}
