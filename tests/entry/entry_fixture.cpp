#include "tests/entry/entry_fixture.h"

#include "app/base/dates.h"

using namespace Qt::Literals::StringLiterals;

EntryTest::EntryTest() {
    database.run(u"INSERT INTO SISETSU (nIDNo, cShamei1) VALUES (10, '中央病院');"
                 "INSERT INTO DOCTOR (cIDno, cName, cAddress1, cKikan, iSisetsuCode) VALUES"
                 " ('1', '阿部', '港町1', '旧称', 10), ('2', '馬場', '本町2', '馬場医院', NULL);"
                 "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, iSejutsuKubun) VALUES"
                 " (1, 1, 7, '山田', 0), (1, 1, 8, '鈴木', 1);"_s);
}

void EntryTest::consent(int day, const QString &set, int patient) {
    const QDate date = dateFromKey(day);
    database.run(u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg,"
                 " nHenkeiDouiDate, iReceptDisabledFlg, tDouiDay, tDouiKaryoS, tDouiKaryoE, cDouiByoumei,"
                 " iSejutuBui2, cIsiCd, cDouiIsiName) VALUES (1, 1, %1, %2, 0, -1, 0, '%3', '%3', '%4',"
                 " '脳梗塞', 1, '1', '阿部')"_s.arg(patient)
                     .arg(day)
                     .arg(dateText(date), dateText(date.addMonths(6).addDays(-1))));
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET %1 nHenkeiDouiDate = 0 * nHenkeiDouiDate"
                 " WHERE nHenkeiDouiDate = -1"_s.arg(set.isEmpty() ? QString() : set + u","_s));
}

QString EntryTest::stored(int day, const QString &columns) const {
    return database.value(u"SELECT %1 FROM RIYOUSHA_DOUI_REC WHERE nDate = %2"_s.arg(columns).arg(day));
}

QStringList EntryTest::keys() const {
    return database.rows(u"SELECT nDate || '/' || iHenkeiFlg || '/' || nHenkeiDouiDate || '/' ||"
                         " coalesce(iNewestFlg, 0) FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 7"
                         " ORDER BY nDate, iHenkeiFlg, nHenkeiDouiDate"_s);
}
