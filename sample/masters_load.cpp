#include "sample/bulk_database.h"
#include "sample/masters.h"

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

QString faxOf(const QString &telephone) {
    return QString(telephone).replace(u"0999-"_s, u"0998-"_s);
}

const QList<Column<Facility>> &facilityColumns() {
    using R = const Facility &;
    static const QList<Column<Facility>> columns = {
        {"nIDNo", [](Cell c, R r) { c.put(r.id); }},
        {"iType", [](Cell c, R r) { c.put(r.type); }},
        {"cSisetsuType",
         [](Cell c, R r) {
             c.put(r.type == Facility::Hospital ? u"医療機関"_s
                   : r.type == Facility::Home   ? u"入居施設"_s
                                                : u"居宅介護支援"_s);
         }},
        {"iKikanShubetsu", [](Cell c, R r) { c.put(r.type == Facility::Hospital ? 1 + r.id % 2 : 0); }},
        {"cShamei1", [](Cell c, R r) { c.put(r.name); }},
        {"cShameiKana1", [](Cell c, R r) { c.put(r.kana); }},
        {"cShamei1Ryaku", [](Cell c, R r) { c.put(r.shortName); }},
        {"cDaihyo", [](Cell c, R r) { c.put(r.head.full); }},
        {"cDaihyoKana", [](Cell c, R r) { c.put(r.head.kana); }},
        {"cYubinNo", [](Cell c, R r) { c.put(r.place.postcode); }},
        {"cAddress1", [](Cell c, R r) { c.put(r.place.line1); }},
        {"cAddress2", [](Cell c, R r) { c.put(r.place.line2); }},
        {"cTelNo", [](Cell c, R r) { c.put(r.telephone); }},
        {"cFaxNo", [](Cell c, R r) { c.put(faxOf(r.telephone)); }},
        {"cDouiIrai", [](Cell c, R r) { c.put(r.requestMethod); }},
        {"cComment",
         [](Cell c, R r) {
             c.put(r.id % 5 == 0 ? u"火曜午後は休診。\r\n書類は受付の窓口へ。"_s : QString());
         }},
    };
    return columns;
}

const QList<Column<Doctor>> &doctorColumns() {
    using R = const Doctor &;
    static const QList<Column<Doctor>> columns = {
        {"cIDNo", [](Cell c, R r) { c.put(QString::number(r.id)); }},
        {"cName", [](Cell c, R r) { c.put(r.name.full); }},
        {"cNameKana", [](Cell c, R r) { c.put(r.name.kana); }},
        {"cKikan", [](Cell c, R r) { c.put(r.hospital.name); }},
        {"cKikanKana", [](Cell c, R r) { c.put(r.hospital.kana); }},
        {"iSisetsuCode", [](Cell c, R r) { r.hospital.id ? c.put(r.hospital.id) : void(); }},
        {"cDaihyo", [](Cell c, R r) { c.put(r.hospital.head.full); }},
        {"cDaihyoKana", [](Cell c, R r) { c.put(r.hospital.head.kana); }},
        {"cYubinNo", [](Cell c, R r) { c.put(r.hospital.place.postcode); }},
        {"cAddress1", [](Cell c, R r) { c.put(r.hospital.place.line1); }},
        {"cAddress2", [](Cell c, R r) { c.put(r.hospital.place.line2); }},
        {"cTelNo", [](Cell c, R r) { c.put(r.hospital.telephone); }},
        {"cFaxNo", [](Cell c, R r) { c.put(faxOf(r.hospital.telephone)); }},
        {"cMail1",
         [](Cell c, R r) { c.put(r.id % 3 == 0 ? u"doctor%1@example.jp"_s.arg(r.id) : QString()); }},
        {"iHandWritingFlg", [](Cell c, R r) { c.put(r.handWriting); }},
        // Form numbers are those of the form master; a doctor without choices of his own has Nulls.
        {"iSyokaiDouiON", [](Cell c, R r) { r.ownLayouts ? c.put(1) : void(); }},
        {"iSyokaiDouiMasTypeNo", [](Cell c, R r) { r.ownLayouts ? c.put(1) : void(); }},
        {"iSyokaiDouiHariTypeNo", [](Cell c, R r) { r.ownLayouts ? c.put(3) : void(); }},
        {"iSaiDouiON", [](Cell c, R r) { r.ownLayouts ? c.put(1) : void(); }},
        {"iSaiDouiMasTypeNo", [](Cell c, R r) { r.ownLayouts ? c.put(2) : void(); }},
        {"iSaiDouiHariTypeNo", [](Cell c, R r) { r.ownLayouts ? c.put(4) : void(); }},
        {"iDouiiraiON", [](Cell c, R r) { r.ownLayouts ? c.put(1) : void(); }},
        {"iDouiiraiMasTypeNo", [](Cell c, R r) { r.ownLayouts ? c.put(12) : void(); }},
        {"iDouiiraiHariTypeNo", [](Cell c, R r) { r.ownLayouts ? c.put(16) : void(); }},
        {"iDouiDispSejyutu", [](Cell c, R r) { r.ownLayouts ? c.put(1) : void(); }},
        {"iDouiDispIshidata", [](Cell c, R r) { r.ownLayouts ? c.put(r.handWriting ? 0 : 1) : void(); }},
        {"iDouiDispRiyouNo", [](Cell c, R r) { r.ownLayouts ? c.put(1) : void(); }},
    };
    return columns;
}

const QList<Column<Staff>> &staffColumns() {
    using R = const Staff &;
    static const QList<Column<Staff>> columns = {
        {"iKyotenCd", [](Cell c, R r) { c.put(r.branch.iKyotenCd); }},
        {"iKyotenEb", [](Cell c, R r) { c.put(r.branch.iKyotenEb); }},
        {"nIDNo", [](Cell c, R r) { c.put(r.id); }},
        {"cName", [](Cell c, R r) { c.put(r.name.full); }},
        {"cNameKana", [](Cell c, R r) { c.put(r.name.kana); }},
        {"cNameRyaku", [](Cell c, R r) { c.put(r.name.family); }},
        {"iSexKubun", [](Cell c, R r) { c.put(static_cast<int>(r.sex)); }},
        {"sBirthday", [](Cell c, R r) { c.put(r.birthday); }},
        {"cYubinNo", [](Cell c, R r) { c.put(r.place.postcode); }},
        {"cAdress1", [](Cell c, R r) { c.put(r.place.line1); }},
        {"cAdress2", [](Cell c, R r) { c.put(r.place.line2); }},
        {"cMobNo", [](Cell c, R r) { c.put(r.telephone); }},
        {"iShikakuKubun", [](Cell c, R r) { c.put(r.acupuncture ? 2 : 1); }},
        {"cSikaku",
         [](Cell c, R r) { c.put(r.acupuncture ? u"はり師・きゅう師"_s : u"あん摩マッサージ指圧師"_s); }},
        {"cTourokuNo",
         [](Cell c, R r) { c.put(QString::number(990000 + r.branch.iKyotenCd * 1000 + r.id)); }},
        {"sNyusyaDay", [](Cell c, R r) { c.put(r.birthday.addYears(24)); }},
        // Staff on duty are 0 or, from older versions of the suite, Null.
        {"iChusiFlg", [](Cell c, R r) { r.suspended || r.id % 3 ? c.put(r.suspended) : void(); }},
    };
    return columns;
}

const QList<Column<CareManager>> &careManagerColumns() {
    using R = const CareManager &;
    static const QList<Column<CareManager>> columns = {
        {"nIDNo", [](Cell c, R r) { c.put(r.id); }},
        {"cName", [](Cell c, R r) { c.put(r.name.full); }},
        {"cNameKana", [](Cell c, R r) { c.put(r.name.kana); }},
        {"nSisetsuCode", [](Cell c, R r) { c.put(r.office.id); }},
        {"iJigyosyoCode", [](Cell c, R r) { c.put(r.office.id); }},
        {"cTelNo", [](Cell c, R r) { c.put(r.telephone); }},
        {"iChusiFlg", [](Cell c, R) { c.put(0); }},
    };
    return columns;
}

const QList<Column<Counsellor>> &counsellorColumns() {
    using R = const Counsellor &;
    static const QList<Column<Counsellor>> columns = {
        {"iKyotenCd", [](Cell c, R r) { c.put(r.branch.iKyotenCd); }},
        {"iKyotenEb", [](Cell c, R r) { c.put(r.branch.iKyotenEb); }},
        {"nIDNo", [](Cell c, R r) { c.put(r.id); }},
        {"cName", [](Cell c, R r) { c.put(r.name.full); }},
        {"cNameKana", [](Cell c, R r) { c.put(r.name.kana); }},
        {"cYubinNo", [](Cell c, R r) { c.put(r.place.postcode); }},
        {"cAdress1", [](Cell c, R r) { c.put(r.place.line1); }},
        {"cTelNo", [](Cell c, R r) { c.put(r.telephone); }},
        {"cMail1", [](Cell c, R r) { c.put(r.mail); }},
        {"iChusiFlg", [](Cell c, R r) { c.put(r.left); }},
    };
    return columns;
}

const QList<Column<Insurer>> &insurerColumns() {
    using R = const Insurer &;
    static const QList<Column<Insurer>> columns = {
        {"cHokenNo", [](Cell c, R r) { c.put(r.number); }},
        {"cHokenJName", [](Cell c, R r) { c.put(r.name); }},
        {"cHokenJNameKana", [](Cell c, R r) { c.put(r.kana); }},
        {"iHoken", [](Cell c, R r) { c.put(r.kind); }},
    };
    return columns;
}

struct Assignment {
    Counsellor counsellor;
    Staff staff;
};

/// Every counsellor works with two practitioners of the branch.
void loadAssignments(BulkDatabase &db, const Masters &masters) {
    using R = const Assignment &;
    QList<Assignment> rows;
    for (const Counsellor &counsellor : masters.counsellors) {
        QList<Staff> own;
        for (const Staff &staff : masters.staff)
            if (staff.branch == counsellor.branch)
                own.append(staff);
        for (int i = 0; i < 2; ++i)
            rows.append({counsellor, own.at((counsellor.id + i) % own.size())});
    }
    db.insertAll<Assignment>("SOUDAN_TANTOU",
                             {{"nIDNo", [](Cell c, R r) { c.put(r.counsellor.id); }},
                              {"iStaffKyotenCd", [](Cell c, R r) { c.put(r.staff.branch.iKyotenCd); }},
                              {"iStaffKyotenEb", [](Cell c, R r) { c.put(r.staff.branch.iKyotenEb); }},
                              {"nStaffIDNo", [](Cell c, R r) { c.put(r.staff.id); }}},
                             rows);
}

} // namespace

void loadMasters(BulkDatabase &db, const Masters &masters, QDate day) {
    db.insertAll("SISETSU", facilityColumns(), masters.hospitals + masters.homes + masters.careOffices);
    db.insertAll("DOCTOR", doctorColumns(), masters.doctors);
    db.insertAll("STAFF", staffColumns(), masters.staff);
    db.insertAll("CAREMANE", careManagerColumns(), masters.careManagers);
    db.insertAll("SOUDAN", counsellorColumns(), masters.counsellors);
    db.insertAll("HOKENJA", insurerColumns(), masters.insurers);
    loadAssignments(db, masters);
    for (const QString &table :
         {u"SISETSU"_s, u"DOCTOR"_s, u"STAFF"_s, u"CAREMANE"_s, u"SOUDAN"_s, u"HOKENJA"_s})
        db.execute(u"UPDATE %1 SET cPcName = 'SAMPLE-PC', tUpDateTime = '%2 09:00:00'"_s.arg(
            table, day.addDays(-30).toString(u"yyyy/MM/dd")));
}

} // namespace sample
