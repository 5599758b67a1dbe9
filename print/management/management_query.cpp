#include "print/management/management_query.h"

#include "app/base/environment.h"
#include "db/adodb.h"
#include "db/field_rows.h"
#include "db/tables/keys_query.h"
#include "db/tables/patient_text.h"
#include "print/request_letter/letter_job.h"
#include "print/request_letter/letter_query.h"

#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

/// What is read of an addressee: `Own…` of the person's row, `Place…` of the institution's.
enum class A {
    Code,
    Who,
    Person,
    OwnZip,
    OwnAddress1,
    OwnAddress2,
    Place,
    PlaceZip,
    PlaceAddress1,
    PlaceAddress2
};

QString columns(const QString &code, const QString &who, const QStringList &addressee) {
    QStringList list{code, who};
    list += addressee;
    for (qsizetype i = 0; i < list.size(); ++i)
        list[i] += u" AS A%1"_s.arg(i);
    return u"SELECT "_s + list.join(u", "_s);
}

QStringList person(const QString &table) {
    QStringList columns;
    for (const QStringView column : {u"cName", u"cYubinNo", u"cAdress1", u"cAdress2"})
        columns += table + u'.' + column.toString();
    return columns;
}

QStringList place(const QString &table) {
    QStringList columns;
    for (const QStringView column : {u"cShamei1", u"cYubinNo", u"cAddress1", u"cAddress2"})
        columns += table + u'.' + column.toString();
    return columns;
}

/// The addressee's columns, and the tables beside RIYOUSHA that they stand in.
QStringList addresseeColumns(EnvelopeDestination destination) {
    const QStringList nothing(4, u"Null"_s);
    if (destination == EnvelopeDestination::Patient)
        return person(u"RIYOUSHA"_s) + nothing;
    if (destination == EnvelopeDestination::Counsellor)
        return person(u"SOUDAN"_s) + place(u"OFFICE"_s);
    return nothing + place(u"SISETSU"_s);
}

QString patientJoins(EnvelopeDestination destination) {
    if (destination == EnvelopeDestination::Patient)
        return {};
    const QString sub = u" LEFT JOIN RIYOUSHA_SUB ON "_s + sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA");
    if (destination == EnvelopeDestination::LivingFacility)
        return sub + u" LEFT JOIN SISETSU ON SISETSU.nIDNo = RIYOUSHA_SUB.iAddressSisetsuCd"_s;
    return sub + u" LEFT JOIN SOUDAN ON SOUDAN.nIDNo = RIYOUSHA_SUB.iSoudaninId AND "_s +
           sqlSameBranch(u"SOUDAN", u"RIYOUSHA") +
           u" LEFT JOIN SISETSU AS OFFICE ON OFFICE.nIDNo = SOUDAN.nSisetsuCode"_s;
}

std::set<qint32> numbersOf(std::span<const qint32> numbers) {
    return {numbers.begin(), numbers.end()};
}

QString patientsSql(const Branch &branch, EnvelopeDestination destination, std::span<const qint32> patients) {
    return columns(u"RIYOUSHA.nIDNo"_s, u"RIYOUSHA.cName"_s, addresseeColumns(destination)) +
           u" FROM RIYOUSHA"_s + patientJoins(destination) + u" WHERE "_s + sqlWhere(branch, u"RIYOUSHA") +
           sqlAndAmong(u"RIYOUSHA.nIDNo", numbersOf(patients));
}

QString masterSql(const Branch &branch, EnvelopeDestination destination, std::span<const qint32> codes) {
    if (destination == EnvelopeDestination::Patient)
        return patientsSql(branch, destination, codes);
    const QStringList addressee = addresseeColumns(destination);
    if (destination == EnvelopeDestination::Counsellor)
        return columns(u"SOUDAN.nIDNo"_s, u"SOUDAN.cName"_s, addressee) +
               u" FROM SOUDAN LEFT JOIN SISETSU AS OFFICE ON OFFICE.nIDNo = SOUDAN.nSisetsuCode WHERE "_s +
               sqlWhere(branch, u"SOUDAN") + sqlAndAmong(u"SOUDAN.nIDNo", numbersOf(codes));
    return columns(u"SISETSU.nIDNo"_s, u"SISETSU.cShamei1"_s, addressee) + u" FROM SISETSU WHERE 1 = 1"_s +
           sqlAndAmong(u"SISETSU.nIDNo", numbersOf(codes));
}

QString newestRowsSql(const Branch &branch, std::span<const qint32> patients) {
    return u"SELECT RIYOUSHA.nIDNo, RIYOUSHA.cName, RIYOUSHA_DOUI_REC.nDate, RIYOUSHA_DOUI_REC.iHenkeiFlg,"
           " RIYOUSHA_DOUI_REC.nHenkeiDouiDate, CASE WHEN RIYOUSHA_DOUI_REC.iHenkeiFlg = 1"
           " THEN RIYOUSHA_DOUI_REC.iOutputFlgHenkei ELSE RIYOUSHA_DOUI_REC.iOutputFlg END AS requested,"
           " RIYOUSHA_DOUI_REC.iDouiHospOutFlg FROM RIYOUSHA_DOUI_REC INNER JOIN RIYOUSHA ON "_s +
           sqlSamePatient(u"RIYOUSHA", u"RIYOUSHA_DOUI_REC") + u" WHERE "_s +
           sqlWhere(branch, u"RIYOUSHA_DOUI_REC") + u" AND "_s + sqlNewestOfKind() +
           sqlAndAmong(u"RIYOUSHA_DOUI_REC.nIDNo", numbersOf(patients)) +
           u" ORDER BY RIYOUSHA_DOUI_REC.iHenkeiFlg"_s;
}

KnownDoctor knownOf(const FieldRows<A> &rows, int row) {
    const auto text = [&](A column) { return rows.text(row, column); };
    KnownDoctor known;
    known.name = text(A::Person);
    known.own = {{}, text(A::OwnZip), text(A::OwnAddress1), text(A::OwnAddress2), {}};
    known.institution = {
        text(A::Place), text(A::PlaceZip), text(A::PlaceAddress1), text(A::PlaceAddress2), {}};
    return known;
}

/// A wish for each of the numbers, in their order; those that the statement does not find are gone.
Result<EnvelopeWishes> readWishes(cT_ADODB &db, const QString &sql, std::span<const qint32> numbers,
                                  const QStringList &who) {
    Result<Recordset> found = readRows(db, sql);
    if (!found)
        return Failure{found.reason()};
    const FieldRows<A> rows(std::move(*found));
    QHash<qint64, int> places;
    for (int row = 0; row < rows.count(); ++row)
        places.insert(rows.number(row, A::Code), row);
    EnvelopeWishes wishes;
    for (size_t i = 0; i < numbers.size(); ++i)
        if (const auto place = places.constFind(numbers[i]); place != places.cend())
            wishes.wishes.push_back(
                {patientText(numbers[i], rows.text(*place, A::Who)), addresseeOf(knownOf(rows, *place))});
        else
            wishes.gone += who[qsizetype(i)];
    return wishes;
}

/// As letters name doctor and institution.
Result<EnvelopeWishes> readDoctorWishes(const Environment &environment, cT_ADODB &db,
                                        std::span<const ManagementRow> rows) {
    std::vector<LetterOrder> orders;
    for (const ManagementRow &row : rows)
        orders.push_back({.row = row.key, .who = row.who});
    LetterJob job(environment, db);
    if (const Result<> read = job.read(orders, {}); !read)
        return Failure{read.reason()};
    EnvelopeWishes wishes;
    wishes.gone = job.goneRows();
    for (const LetterRow &row : job.source().rows)
        wishes.wishes.push_back({letterWho(row), letterAddressee(orders[row.order], row, job.source())});
    return wishes;
}

Result<EnvelopeWishes> readMasterDoctors(cT_ADODB &db, const QStringList &codes) {
    const Result<LetterDoctors> doctors = readLetterDoctors(db, codes);
    if (!doctors)
        return Failure{doctors.reason()};
    EnvelopeWishes wishes;
    for (const QString &code : codes)
        if (const auto doctor = doctors->constFind(code); doctor != doctors->cend())
            wishes.wishes.push_back({code + u' ' + doctor->name, addresseeOf(*doctor)});
        else
            wishes.gone += code;
    return wishes;
}

} // namespace

Result<EnvelopeWishes> readWishes(const Environment &environment, cT_ADODB &db,
                                  EnvelopeDestination destination, std::span<const ManagementRow> rows) {
    if (destination == EnvelopeDestination::Institution || destination == EnvelopeDestination::Doctor)
        return readDoctorWishes(environment, db, rows);
    std::vector<qint32> patients;
    QStringList who;
    for (const ManagementRow &row : rows) {
        patients.push_back(row.key.patient.nIDNo);
        who += row.who;
    }
    return readWishes(db, patientsSql(environment.branch, destination, patients), patients, who);
}

Result<EnvelopeWishes> readMasterWishes(const Environment &environment, cT_ADODB &db,
                                        EnvelopeDestination destination, const QStringList &codes) {
    std::vector<qint32> numbers;
    for (const QString &code : codes)
        numbers.push_back(code.toInt());
    Result<EnvelopeWishes> wishes =
        destination == EnvelopeDestination::Doctor
            ? readMasterDoctors(db, codes)
            : readWishes(db, masterSql(environment.branch, destination, numbers), numbers, codes);
    if (wishes)
        wishes->fromMaster = true;
    return wishes;
}

Result<NewestRows> readNewestRows(const Environment &environment, cT_ADODB &db,
                                  std::span<const qint32> patients) {
    const Branch &branch = environment.branch;
    const Result<Recordset> found = readRows(db, newestRowsSql(branch, patients));
    if (!found)
        return Failure{found.reason()};
    NewestRows rows;
    for (int i = 0; i < found->rowCount(); ++i) {
        const auto number = [&](int column) { return qint32(found->number(i, column)); };
        const PatientKey patient{branch.iKyotenCd, branch.iKyotenEb, number(0)};
        rows[patient.nIDNo].push_back({{patient, number(2), short(number(3)), number(4)},
                                       patientText(patient.nIDNo, found->text(i, 1)),
                                       number(5) != 0,
                                       number(6) == 1});
    }
    return rows;
}
