#include "sample/bulk_database.h"
#include "sample/masters.h"
#include "setup/fixed_rows.h"
#include "setup/holidays.h"

#include <QMap>

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

template <class T> void put(Cell cell, const Nullable<T> &value) {
    if (!value.isNull())
        cell.put(int(value));
}

void loadCodes(BulkDatabase &db) {
    using R = const cD_CODE &;
    db.insertAll<cD_CODE>("CODE",
                          {{"iBunrui", [](Cell c, R r) { c.put(r.iBunrui); }},
                           {"nIDNo", [](Cell c, R r) { c.put(r.nIDNo); }},
                           {"nIDIndex", [](Cell c, R r) { c.put(r.nIDIndex); }},
                           {"cName", [](Cell c, R r) { c.put(r.cName); }},
                           {"iUseFlg", [](Cell c, R r) { put(c, r.iUseFlg); }}},
                          setup::codeRows());
}

void loadPractice(BulkDatabase &db, QDate day) {
    const QString stamp = u"'SAMPLE-PC', '%1 09:00:00'"_s.arg(day.addDays(-60).toString(u"yyyy/MM/dd"));
    const QString branches =
        u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, iUsedFlg, cYubinNo, cAddress1, cTelNo, "
        u"cFaxNo, "
        "cPcName, tUpDateTime) VALUES "
        "(1, 0, 'ひなた訪問治療院　本部', 1, '992-1011', '緑川県若葉市中央1丁目2－3', '0999-20-0001', "
        "'0999-20-0002', %1),"
        "(1, 1, 'ひなた訪問治療院　若葉院', 1, '992-1011', '緑川県若葉市中央1丁目2－3', '0999-20-0001', "
        "'0999-20-0002', %1),"
        "(2, 0, 'ひなた訪問治療院　美浜地区', 1, NULL, NULL, NULL, NULL, %1),"
        "(2, 1, 'ひなた訪問治療院　美浜院', 1, '992-2015', '緑川県美浜市港町4丁目5－6', '0999-30-0001', NULL, %1)"_s;
    db.execute(branches.arg(stamp));
    const QString companies =
        u"INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, iType, cShamei1, cShameiKana1, cDaihyo, "
        u"cDaihyoKana, "
        "cYubinNo, cAddress1, cAddress2, cTelNo, cFaxNo, cMailDestination, cMailDestinationZipNo, "
        "cPcName, tUpDateTime) VALUES "
        "(1, 1, 1, 0, '株式会社ひなた', 'カブシキガイシャヒナタ', '日向　陽子', 'ヒナタ　ヨウコ', "
        "'992-1011', "
        "'緑川県若葉市中央1丁目2－3', 'ひなたビル２階', '0999-20-0001', '0999-20-0002', "
        "'緑川県若葉市中央1丁目2－3　ひなたビル２階　株式会社ひなた', '992-1011', %1),"
        "(2, 1, 2, 1, '株式会社ひなた　美浜支店', 'カブシキガイシャヒナタミハマシテン', '髙橋　誠', "
        "'タカハシ　マコト', "
        "'992-2015', '緑川県美浜市港町4丁目5－6', NULL, '0999-30-0001', NULL, NULL, NULL, %1)"_s;
    db.execute(companies.arg(stamp));
    // The first branch keeps the reference day of the suite's default, the second renews at the month's end.
    const QString settings =
        u"INSERT INTO CORP_SUB (iKyotenCd, iKyotenEb, iDouiUpdatePermitDay, cDouiByoumei1_Def, "
        u"iSyokaiDouiON, "
        "iSyokaiDouiMasTypeNo, iSyokaiDouiHariTypeNo, iSaiDouiON, iSaiDouiMasTypeNo, iSaiDouiHariTypeNo, "
        "iDouiiraiON, iDouiiraiMasTypeNo, iDouiiraiHariTypeNo, iDouiDispSejyutu, iDouiDispIshidata, "
        "iDouiDispRiyouNo) VALUES (1, 1, NULL, '脳梗塞後遺症', 1, 1, 3, 1, 2, 4, 1, 12, 16, 1, 1, 1),"
        "(2, 1, -1, NULL, 1, 1, 3, 1, 2, 4, 1, 12, 16, 1, 1, 0)"_s;
    db.execute(settings);
}

/// Each branch has its forms, and branch 0 the same for prints over all branches.
void loadForms(BulkDatabase &db) {
    using R = const cD_SHINSEISYO &;
    QList<cD_SHINSEISYO> forms = setup::formRows(Branch{0, 0});
    for (const Branch &branch : sampleBranches())
        forms += setup::formRows(branch);
    db.insertAll<cD_SHINSEISYO>("SHINSEISYO",
                                {{"iKyotenCd", [](Cell c, R r) { c.put(r.iKyotenCd); }},
                                 {"iKyotenEb", [](Cell c, R r) { c.put(r.iKyotenEb); }},
                                 {"nIDNo", [](Cell c, R r) { c.put(r.nIDNo); }},
                                 {"cFileName", [](Cell c, R r) { c.put(r.cFileName); }},
                                 {"cDispName", [](Cell c, R r) { c.put(r.cDispName); }},
                                 {"iPrintType", [](Cell c, R r) { put(c, r.iPrintType); }},
                                 {"iKubun", [](Cell c, R r) { put(c, r.iKubun); }},
                                 {"iSejutsuKubun", [](Cell c, R r) { put(c, r.iSejutsuKubun); }},
                                 {"iDelFlg", [](Cell c, R r) { put(c, r.iDelFlg); }}},
                                forms);
}

struct DayOff {
    Branch branch;
    QDate date;
    QString name;
    bool counts;
};

/// National holidays, the practice's own days off, and days that the calendar notes but the practice works.
QMap<QDate, DayOff> daysOff(Branch branch, int year) {
    QMap<QDate, DayOff> days;
    for (const int date : {13, 14, 15})
        days[QDate(year, 8, date)] = {branch, QDate(year, 8, date), u"お盆"_s, false};
    for (const QDate &date : {QDate(year, 1, 2), QDate(year, 1, 3), QDate(year, 12, 30), QDate(year, 12, 31)})
        days[date] = {branch, date, u"年末年始休み"_s, true};
    for (const setup::Holiday &holiday : setup::nationalHolidays(year))
        days[holiday.date] = {branch, holiday.date, holiday.name, true};
    return days;
}

void loadHolidays(BulkDatabase &db, QDate day) {
    using R = const DayOff &;
    QList<DayOff> days;
    for (const Branch &branch : sampleBranches())
        for (int year = day.year() - 2; year <= day.year() + 2; ++year)
            days += daysOff(branch, year).values();
    db.insertAll<DayOff>("HOLIDAY",
                         {{"iKyotenCd", [](Cell c, R r) { c.put(r.branch.iKyotenCd); }},
                          {"iKyotenEb", [](Cell c, R r) { c.put(r.branch.iKyotenEb); }},
                          {"iYear", [](Cell c, R r) { c.put(r.date.year()); }},
                          {"iMonth", [](Cell c, R r) { c.put(r.date.month()); }},
                          {"iDay", [](Cell c, R r) { c.put(r.date.day()); }},
                          {"iChkCalendar", [](Cell c, R r) { c.put(r.counts); }},
                          {"cName", [](Cell c, R r) { c.put(r.name); }}},
                         days);
}

/// Prices of two periods, so that a month finds the ones of its time.
void loadPrices(BulkDatabase &db) {
    db.execute(u"INSERT INTO 療養費単価 (cStartDate, cEndDate, iTankaKbn, nTankaCode, nTanka) VALUES "
               "('2022/06/01', '2024/09/30', 1, 1, 350), ('2022/06/01', '2024/09/30', 1, 2, 450),"
               "('2022/06/01', '2024/09/30', 1, 3, 125), ('2022/06/01', '2024/09/30', 1, 4, 160),"
               "('2022/06/01', '2024/09/30', 1, 11, 1550), ('2022/06/01', '2024/09/30', 1, 12, 1610),"
               "('2022/06/01', '2024/09/30', 1, 15, 34), ('2022/06/01', '2024/09/30', 1, 16, 1780),"
               "('2022/06/01', '2024/09/30', 1, 17, 1860), ('2022/06/01', '2024/09/30', 1, 18, 460),"
               "('2022/06/01', '2024/09/30', 2, 1, 2300), ('2022/06/01', '2024/09/30', 2, 2, 2550),"
               "('2024/10/01', '2099/12/31', 1, 1, 450), ('2024/10/01', '2099/12/31', 1, 2, 470),"
               "('2024/10/01', '2099/12/31', 1, 3, 180), ('2024/10/01', '2099/12/31', 1, 4, 300),"
               "('2024/10/01', '2099/12/31', 1, 11, 1610), ('2024/10/01', '2099/12/31', 1, 12, 1770),"
               "('2024/10/01', '2099/12/31', 1, 15, 100), ('2024/10/01', '2099/12/31', 1, 16, 1950),"
               "('2024/10/01', '2099/12/31', 1, 17, 2230), ('2024/10/01', '2099/12/31', 1, 18, 480),"
               "('2024/10/01', '2099/12/31', 2, 1, 2300), ('2024/10/01', '2099/12/31', 2, 2, 2550),"
               "('2022/06/01', '2099/12/31', 9, 1, 500), ('2022/06/01', '2099/12/31', 9, 2, 1000),"
               "('2022/06/01', '2099/12/31', 9, 3, 1500), ('2022/06/01', '2099/12/31', 9, 11, 4000),"
               "('2022/06/01', '2099/12/31', 9, 12, 500)"_s);
    // One office keeps the bands: fees are looked up among those of all.
    db.execute(
        u"INSERT INTO 往療費区分 (iKyotenCd, iKyotenEb, cStartDate, cEndDate, dMinLen, dMaxLen, nMinLen, "
        "nMaxLen, nKingakuOuryou, nKingakuSejyutsu) VALUES "
        "(1, 1, '2022/06/01', '2024/09/30', 0, 4, 0, 4000, 2300, 0),"
        "(1, 1, '2022/06/01', '2024/09/30', 4, 16, 4000, 16000, 2550, 0),"
        "(1, 1, '2024/10/01', '2099/12/31', 0, 2, 0, 2000, 2300, 0),"
        "(1, 1, '2024/10/01', '2099/12/31', 2, 4, 2000, 4000, 2400, 0),"
        "(1, 1, '2024/10/01', '2099/12/31', 4, 16, 4000, 16000, 2700, 0)"_s);
}

} // namespace

void loadFixedTables(BulkDatabase &db, QDate day) {
    loadPractice(db, day);
    loadCodes(db);
    loadForms(db);
    loadHolidays(db, day);
    loadPrices(db);
}

} // namespace sample
