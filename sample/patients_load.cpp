#include "sample/bulk_database.h"
#include "sample/patients.h"

#include "app/base/dates.h"

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

using P = const Patient &;

/// A consent with whom it belongs to.
struct ConsentRow {
    const Patient &patient;
    const Consent &consent;
    const Doctor *doctor;
};
using C = const ConsentRow &;

void putId(Cell cell, const Doctor *doctor) {
    if (doctor)
        cell.put(QString::number(doctor->id));
}

template <class T> void putId(Cell cell, const T *master) {
    if (master)
        cell.put(master->id);
}

QString addressOf(const Facility &facility) {
    const auto &[postcode, line1, line2] = facility.place;
    return line2.isEmpty() ? line1 : line1 + u'　' + line2;
}

/// Nobody is treated before a first consent.
bool isFirstConsent(P p) {
    return p.firstTreatment >= p.newestConsent().day;
}

/// A few are visited for a reason that the form has no box for.
bool hasOwnVisitReason(P p) {
    return p.careDegree > 2 && p.id % 9 == 0;
}

template <int i> void putStaff(Cell cell, P p) {
    if (i < p.staff.size())
        cell.put(p.staff.at(i));
}

const QList<Column<Patient>> &patientColumns() {
    static const QList<Column<Patient>> columns = {
        {"iKyotenCd", [](Cell c, P p) { c.put(p.branch.iKyotenCd); }},
        {"iKyotenEb", [](Cell c, P p) { c.put(p.branch.iKyotenEb); }},
        {"nIDNo", [](Cell c, P p) { c.put(p.id); }},
        {"cName", [](Cell c, P p) { c.put(p.name.full); }},
        {"cNameKana", [](Cell c, P p) { c.put(p.kana); }},
        {"cNameRyaku", [](Cell c, P p) { c.put(p.name.family); }},
        {"iSexKubun", [](Cell c, P p) { c.put(static_cast<int>(p.sex)); }},
        {"tBirthday", [](Cell c, P p) { c.put(p.birthday); }},
        {"cTelNo", [](Cell c, P p) { c.put(p.telephone); }},
        {"cYubinNo", [](Cell c, P p) { c.put(p.place.postcode); }},
        {"cAdress1", [](Cell c, P p) { c.put(p.place.line1); }},
        {"cAdress2", [](Cell c, P p) { c.put(p.place.line2); }},
        {"cZokugara", [](Cell c, P p) { c.put(p.id % 3 ? u"本人"_s : u"家族"_s); }},
        {"iSejutsuKubun", [](Cell c, P p) { c.put(p.content.acupuncture); }},
        {"tSyoryoDay", [](Cell c, P p) { c.put(p.firstTreatment); }},
        {"tHatsubyou", [](Cell c, P p) { c.put(p.onset); }},
        {"iTenki", [](Cell c, P p) { c.put(p.outcome); }},
        {"tSkikanS", [](Cell c, P p) { c.put(p.firstTreatment); }},
        {"tSkikanE", [](Cell c, P p) { c.put(p.expires); }},
        {"tExpireDay", [](Cell c, P p) { c.put(p.expires); }},
        {"iOuryouUmu", [](Cell c, P p) { c.put(p.careDegree > 2); }},
        {"iOuryouRiyuu1", [](Cell c, P p) { c.put(p.careDegree > 2); }},
        {"iOuryouRiyuu2", [](Cell c, P p) { c.put(p.careDegree > 5); }},
        {"iOuryouRiyuu3", [](Cell c, P p) { c.put(hasOwnVisitReason(p)); }},
        {"cOuryouRiyuuSonota",
         [](Cell c, P p) { c.put(hasOwnVisitReason(p) ? u"在宅酸素療法のため"_s : QString()); }},
        {"iHokouType", [](Cell c, P p) { c.put(1 + p.careDegree / 2); }},
        {"iKaigodo", [](Cell c, P p) { c.put(p.careDegree); }},
        {"nTantou", putStaff<0>},
        {"nTantou2", putStaff<1>},
        {"nTantou3", putStaff<2>},
        {"nTantou4", putStaff<3>},
        {"nTantou5", putStaff<4>},
        {"cHokenNo", [](Cell c, P p) { c.put(p.insurer->number); }},
        {"cHokenJName", [](Cell c, P p) { c.put(p.insurer->name); }},
        {"iHoken", [](Cell c, P p) { c.put(p.insurer->kind); }},
        {"nSisetsuCd", [](Cell c, P p) { putId(c, p.home); }},
        {"cSisetsuName", [](Cell c, P p) { c.put(p.home ? p.home->name : QString()); }},
        {"cSisetsuAddress", [](Cell c, P p) { c.put(p.home ? addressOf(*p.home) : QString()); }},
        {"nCareManeCd", [](Cell c, P p) { putId(c, p.careManager); }},
        {"cCareManeName", [](Cell c, P p) { c.put(p.careManager ? p.careManager->name.full : QString()); }},
        {"cPcName", [](Cell c, P) { c.put(u"SAMPLE-PC"_s); }},
        {"tUpDateTime", [](Cell c, P p) { c.put(p.updated); }},
    };
    return columns;
}

/// The patient's row repeats the newest consent, and names a second one where there is a second doctor.
const QList<Column<Patient>> &summaryColumns() {
    static const QList<Column<Patient>> columns = {
        {"tDouiDay1", [](Cell c, P p) { c.put(p.newestConsent().day); }},
        {"tDouiKaryoS1", [](Cell c, P p) { c.put(p.newestConsent().period.start); }},
        {"tDouiKaryoE1", [](Cell c, P p) { c.put(p.newestConsent().period.end); }},
        {"iDouiShubetsu1", [](Cell c, P p) { c.put(p.newestConsent().oral); }},
        {"cDouiIsiName1", [](Cell c, P p) { c.put(p.doctor ? p.doctor->name.full : QString()); }},
        {"cDouiIsiKikan1", [](Cell c, P p) { c.put(p.doctor ? p.doctor->hospital.name : QString()); }},
        {"cDouiIsiAdd1", [](Cell c, P p) { c.put(p.doctor ? addressOf(p.doctor->hospital) : QString()); }},
        {"cDouiByoumei1", [](Cell c, P p) { c.put(p.content.diagnosis); }},
        {"nDouiIsiCd", [](Cell c, P p) { putId<Doctor>(c, p.doctor); }},
        {"iDouiKikan1", [](Cell c, P) { c.put(6); }},
        {"tDouiDay2", [](Cell c, P p) { c.put(p.secondDay); }},
        {"tDouiKaryoS2", [](Cell c, P p) { c.put(p.secondDay); }},
        {"tDouiKaryoE2",
         [](Cell c, P p) { c.put(p.secondDay.isValid() ? periodEnd(p.secondDay, 6) : QDate()); }},
        {"cDouiIsiName2", [](Cell c, P p) { c.put(p.secondDoctor ? p.secondDoctor->name.full : QString()); }},
        {"cDouiIsiKikan2",
         [](Cell c, P p) { c.put(p.secondDoctor ? p.secondDoctor->hospital.name : QString()); }},
    };
    return columns;
}

const QList<Column<Patient>> &subColumns() {
    static const QList<Column<Patient>> columns = {
        {"iKyotenCd", [](Cell c, P p) { c.put(p.branch.iKyotenCd); }},
        {"iKyotenEb", [](Cell c, P p) { c.put(p.branch.iKyotenEb); }},
        {"nIDNo", [](Cell c, P p) { c.put(p.id); }},
        {"iIsiCd2", [](Cell c, P p) { putId(c, p.secondDoctor); }},
        {"iSisetsuCode",
         [](Cell c, P p) { putId(c, p.doctor && p.doctor->hospital.id ? &p.doctor->hospital : nullptr); }},
        {"iAddressSisetsuCd", [](Cell c, P p) { putId(c, p.home); }},
        {"iSoudaninId", [](Cell c, P p) { putId(c, p.counsellor); }},
        {"iDouishoId", [](Cell c, P p) { c.put((p.content.acupuncture ? 4 : 2) - isFirstConsent(p)); }},
        {"iDouishoIdKoutou", [](Cell c, P p) { c.put(p.content.acupuncture ? 6 : 5); }},
        {"cYubinNoS0Ryosyu", [](Cell c, P p) { c.put(p.place.postcode); }},
        {"cJusyo1S0Ryosyu", [](Cell c, P p) { c.put(p.place.line1); }},
        {"cJusyo2S0Ryosyu", [](Cell c, P p) { c.put(p.place.line2); }},
        {"cTelS0Ryosyu", [](Cell c, P p) { c.put(p.telephone); }},
        {"cAtenaS0Ryosyu", [](Cell c, P p) { c.put(p.name.full); }},
        // Somebody else is to be told where the patient lives in a home.
        {"cYubinNoS0Renraku", [](Cell c, P p) { c.put(p.home ? p.home->place.postcode : QString()); }},
        {"cJusyo1S0Renraku", [](Cell c, P p) { c.put(p.home ? p.home->place.line1 : QString()); }},
        {"cTelS0Renraku", [](Cell c, P p) { c.put(p.home ? p.home->telephone : QString()); }},
        {"cAtenaS0Renraku", [](Cell c, P p) { c.put(p.home ? p.home->name : QString()); }},
        {"iSaiDouiON", [](Cell c, P p) { p.ownLayouts ? c.put(1) : void(); }},
        {"iSaiDouiMasTypeNo", [](Cell c, P p) { p.ownLayouts ? c.put(2) : void(); }},
        {"iSaiDouiHariTypeNo", [](Cell c, P p) { p.ownLayouts ? c.put(4) : void(); }},
        {"cPcName", [](Cell c, P) { c.put(u"SAMPLE-PC"_s); }},
        {"tUpDateTime", [](Cell c, P p) { c.put(p.updated); }},
    };
    return columns;
}

/// One row a patient, of the month of the newest consent. Months and type are often Null: then they are 6 and
/// the mid-month rule.
const QList<Column<Patient>> &periodSettingColumns() {
    static const QList<Column<Patient>> columns = {
        {"iKyotenCd", [](Cell c, P p) { c.put(p.branch.iKyotenCd); }},
        {"iKyotenEb", [](Cell c, P p) { c.put(p.branch.iKyotenEb); }},
        {"nIDNo", [](Cell c, P p) { c.put(p.id); }},
        {"tDouiYM", [](Cell c, P p) { c.put(dateText(p.newestConsent().day).left(7)); }},
        {"iDouiNo", [](Cell c, P) { c.put(1); }},
        {"tDouiDay1", [](Cell c, P p) { c.put(p.newestConsent().day); }},
        {"tDouiKaryoS1", [](Cell c, P p) { c.put(p.newestConsent().period.start); }},
        {"tDouiKaryoE1", [](Cell c, P p) { c.put(p.newestConsent().period.end); }},
        {"cDouiByoumei1", [](Cell c, P p) { c.put(p.content.diagnosis); }},
        {"iDouiKikan1", [](Cell c, P p) { p.id % 4 ? c.put(6) : void(); }},
        {"iDoui1CalcType", [](Cell c, P p) { p.id % 7 ? c.put(1) : void(); }},
        {"iDoui2CalcType", [](Cell c, P p) { p.id % 7 ? c.put(1) : void(); }},
        {"iKikanCalcType", [](Cell c, P p) { p.id % 5 ? c.put(1) : void(); }},
        {"cPcName", [](Cell c, P) { c.put(u"SAMPLE-PC"_s); }},
        {"tUpDateTime", [](Cell c, P p) { c.put(p.updated); }},
    };
    return columns;
}

template <int bit> void putPart(Cell cell, C r) {
    if (!r.patient.content.acupuncture)
        cell.put(r.patient.content.parts >> bit & 1);
}
template <int bit> void putParalysis(Cell cell, C r) {
    cell.put(r.patient.content.paralysis >> bit & 1);
}
template <int bit> void putContracture(Cell cell, C r) {
    cell.put(r.patient.content.contractures >> bit & 1);
}
template <int bit> void putDisease(Cell cell, C r) {
    if (r.patient.content.acupuncture)
        cell.put(r.patient.content.diseases >> bit & 1);
}

bool isMassage(C r) {
    return !r.patient.content.acupuncture;
}

const QList<Column<ConsentRow>> &consentKeyColumns() {
    static const QList<Column<ConsentRow>> columns = {
        {"iKyotenCd", [](Cell c, C r) { c.put(r.patient.branch.iKyotenCd); }},
        {"iKyotenEb", [](Cell c, C r) { c.put(r.patient.branch.iKyotenEb); }},
        {"nIDNo", [](Cell c, C r) { c.put(r.patient.id); }},
        {"nDate", [](Cell c, C r) { c.put(dateKey(r.consent.day)); }},
        {"iHenkeiFlg", [](Cell c, C r) { c.put(r.consent.deformity); }},
        {"nHenkeiDouiDate", [](Cell c, C r) { c.put(r.consent.deformity ? dateKey(r.consent.day) : 0); }},
        {"iNewestFlg", [](Cell c, C r) { c.put(r.consent.newest); }},
        {"iReceptDisabledFlg", [](Cell c, C r) { c.put(r.consent.disabled); }},
        {"iDouiShubetsu", [](Cell c, C r) { c.put(r.consent.oral); }},
        {"tDouiDay", [](Cell c, C r) { c.put(r.consent.day); }},
        {"tDouiKaryoS", [](Cell c, C r) { c.put(r.consent.period.start); }},
        {"tDouiKaryoE", [](Cell c, C r) { c.put(r.consent.period.end); }},
        {"tShinsatsuDay", [](Cell c, C r) { c.put(r.consent.examined); }},
        {"nDouiUpMonth", [](Cell c, C r) { c.put(r.consent.deformity ? 1 : 6); }},
        {"cIsiCd", [](Cell c, C r) { putId(c, r.doctor); }},
        {"cDouiIsiName", [](Cell c, C r) { c.put(r.doctor ? r.doctor->name.full : QString()); }},
        {"cDouiIsiKikan", [](Cell c, C r) { c.put(r.doctor ? r.doctor->hospital.name : QString()); }},
        {"cDouiIsiAdd", [](Cell c, C r) { c.put(r.doctor ? addressOf(r.doctor->hospital) : QString()); }},
        {"cPcName", [](Cell c, C) { c.put(u"SAMPLE-PC"_s); }},
        {"tUpDateTime", [](Cell c, C r) { c.put(r.consent.updated); }},
    };
    return columns;
}

const QList<Column<ConsentRow>> &requestColumns() {
    static const QList<Column<ConsentRow>> columns = {
        {"tSaiDouiDay", [](Cell c, C r) { c.put(r.consent.againDay); }},
        {"tSaiDouiKaryoS", [](Cell c, C r) { c.put(r.consent.again.start); }},
        {"tSaiDouiKaryoE", [](Cell c, C r) { c.put(r.consent.again.end); }},
        {"tDouiDayTempHenkei", [](Cell c, C r) { r.consent.deformity ? c.put(r.consent.againDay) : void(); }},
        {"tDouiKaryoSTempHenkei",
         [](Cell c, C r) { r.consent.deformity ? c.put(r.consent.again.start) : void(); }},
        {"tDouiKaryoETempHenkei",
         [](Cell c, C r) { r.consent.deformity ? c.put(r.consent.again.end) : void(); }},
        {"iOutputFlg", [](Cell c, C r) { c.put(r.consent.requested && !r.consent.deformity); }},
        {"iGetFlg", [](Cell c, C r) { c.put(r.consent.received && !r.consent.deformity); }},
        {"iOutputFlgHenkei", [](Cell c, C r) { c.put(r.consent.requested && r.consent.deformity); }},
        {"iGetFlgHenkei", [](Cell c, C r) { c.put(r.consent.received && r.consent.deformity); }},
        {"iDouiHospOutFlg", [](Cell c, C r) { c.put(r.consent.requested && r.consent.toHospital); }},
        {"iDouiIsiOutFlg", [](Cell c, C r) { c.put(r.consent.requested && !r.consent.toHospital); }},
        {"iRenrakuFlg", [](Cell c, C r) { r.consent.requested ? c.put(r.consent.contact) : void(); }},
        {"iSendFlg", [](Cell c, C r) { r.consent.requested ? c.put(r.consent.sent) : void(); }},
        {"iDouiIraiType", [](Cell c, C r) { c.put(r.consent.method); }},
        {"cKobetuDouiIrai", [](Cell c, C r) { c.put(r.consent.ownMethods); }},
        {"cItiranBikou", [](Cell c, C r) { c.put(r.consent.remark); }},
    };
    return columns;
}

const QList<Column<ConsentRow>> &treatmentColumns() {
    static const QList<Column<ConsentRow>> columns = {
        {"iOnan", [](Cell c, C r) { c.put(isMassage(r) && r.patient.content.warmth); }},
        {"iDenki", [](Cell c, C r) { c.put(isMassage(r) && r.patient.content.electric); }},
        {"tOnanSday",
         [](Cell c, C r) {
             isMassage(r) && r.patient.content.warmth ? c.put(r.consent.period.start) : void();
         }},
        {"tOnanEday",
         [](Cell c, C r) {
             isMassage(r) && r.patient.content.warmth ? c.put(r.consent.period.end) : void();
         }},
        {"tDenkiSday",
         [](Cell c, C r) {
             isMassage(r) && r.patient.content.electric ? c.put(r.consent.period.start) : void();
         }},
        {"tDenkiEday",
         [](Cell c, C r) {
             isMassage(r) && r.patient.content.electric ? c.put(r.consent.period.end) : void();
         }},
        {"tHenkeSday",
         [](Cell c, C r) {
             c.put(r.consent.deformity ? r.consent.period.start : r.consent.correction.start);
         }},
        {"tHenKeEday",
         [](Cell c, C r) { c.put(r.consent.deformity ? r.consent.period.end : r.consent.correction.end); }},
        {"iHKHariUmu", [](Cell c, C r) { c.put(!isMassage(r)); }},
        {"iHKKyuUmu", [](Cell c, C r) { c.put(!isMassage(r) && r.patient.content.warmth); }},
        {"iHKDekiUmu", [](Cell c, C r) { c.put(!isMassage(r) && r.patient.content.electric); }},
        {"tHKHariSday", [](Cell c, C r) { isMassage(r) ? void() : c.put(r.consent.period.start); }},
        {"tHKHariEday", [](Cell c, C r) { isMassage(r) ? void() : c.put(r.consent.period.end); }},
        {"tHKKyuSday",
         [](Cell c, C r) {
             isMassage(r) || !r.patient.content.warmth ? void() : c.put(r.consent.period.start);
         }},
        {"tHKKyuEday",
         [](Cell c, C r) {
             isMassage(r) || !r.patient.content.warmth ? void() : c.put(r.consent.period.end);
         }},
        {"cDouiByoumei", [](Cell c, C r) { c.put(r.patient.content.diagnosis); }},
        {"cByoumeiM", [](Cell c, C r) { c.put(isMassage(r) ? r.patient.content.diagnosis : QString()); }},
        {"cByoumeiH", [](Cell c, C r) { c.put(isMassage(r) ? QString() : r.patient.content.diagnosis); }},
        {"cMasByoumei", [](Cell c, C r) { c.put(isMassage(r) ? r.patient.content.diagnosis : QString()); }},
        {"cSyoujyouSonotaStr", [](Cell c, C r) { c.put(r.patient.content.otherSymptom); }},
    };
    return columns;
}

const QList<Column<ConsentRow>> &findingColumns() {
    static const QList<Column<ConsentRow>> columns = {
        {"iSejutuBui1", putPart<0>},
        {"iSejutuBui2", putPart<1>},
        {"iSejutuBui3", putPart<2>},
        {"iSejutuBui4", putPart<3>},
        {"iSejutuBui5", putPart<4>},
        {"iMahiKukan", putParalysis<0>},
        {"iMahiMigiue", putParalysis<1>},
        {"iMahiHidariue", putParalysis<2>},
        {"iMahiMigishita", putParalysis<3>},
        {"iMahiHidarishita", putParalysis<4>},
        {"iKousyukuMigikata", putContracture<0>},
        {"iKousyukuMigihiji", putContracture<1>},
        {"iKousyukuMigitekubi", putContracture<2>},
        {"iKousyukuMigikokannsetu", putContracture<3>},
        {"iKousyukuMigihiza", putContracture<4>},
        {"iKousyukuMigiashikubi", putContracture<5>},
        {"iKousyukuHidarikata", putContracture<6>},
        {"iKousyukuHidarihiji", putContracture<7>},
        {"iKousyukuHidaritekubi", putContracture<8>},
        {"iKousyukuHidarikokannsetu", putContracture<9>},
        {"iKousyukuHidarihiza", putContracture<10>},
        {"iKousyukuHidariashikubi", putContracture<11>},
        {"iHKSyobyou01Flg", putDisease<0>},
        {"iHKSyobyou02Flg", putDisease<1>},
        {"iHKSyobyou03Flg", putDisease<2>},
        {"iHKSyobyou04Flg", putDisease<3>},
        {"iHKSyobyou05Flg", putDisease<4>},
        {"iHKSyobyou06Flg", putDisease<5>},
        {"iHKSyobyou07Flg", putDisease<6>},
    };
    return columns;
}

} // namespace

void loadPatients(BulkDatabase &db, Random &random, const Masters &masters, int count, QDate day) {
    BulkDatabase::Inserter<Patient> patients(db, "RIYOUSHA", patientColumns() + summaryColumns());
    BulkDatabase::Inserter<Patient> subs(db, "RIYOUSHA_SUB", subColumns());
    BulkDatabase::Inserter<Patient> settings(db, "DOUIKIROKU", periodSettingColumns());
    BulkDatabase::Inserter<ConsentRow> consents(db, "RIYOUSHA_DOUI_REC",
                                                consentKeyColumns() + requestColumns() + treatmentColumns() +
                                                    findingColumns());

    PatientMaker maker(random, masters, day);
    const int ofFirstBranch = count * 3 / 5;
    for (int i = 0; i < count; ++i) {
        const Patient patient = maker.make(sampleBranches().at(i < ofFirstBranch ? 0 : 1), i + 1);
        patients.insert(patient);
        if (patient.hasSubRow)
            subs.insert(patient);
        if (patient.hasPeriodSettings)
            settings.insert(patient);
        for (const Consent &consent : patient.consents)
            consents.insert({patient, consent, patient.doctorOf(consent)});
    }
}

} // namespace sample
