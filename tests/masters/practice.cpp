#include "tests/masters/practice.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

MasterPractice::MasterPractice() {
    database.run(
        u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, iUsedFlg) VALUES (1, 1, 1), (1, 2, 1);"
        "INSERT INTO SISETSU (nIDNo, cShamei1, cShameiKana1, cYubinNo, cAddress1, cTelNo, cDouiIrai, nLat) "
        u"VALUES"
        " (5, '甲病院', 'コウビョウイン', '992-1010', '緑川県若葉市中央1', '0999-1', 'ＦＡＸ', 35.123456789),"
        " (6, '乙荘', 'オツソウ', NULL, NULL, NULL, NULL, NULL);"
        "INSERT INTO DOCTOR (cIDNo, cName, cNameKana, cKikan, iSisetsuCode, cAddress1, cTelNo, tUpDateTime) "
        "VALUES"
        " ('3', '三浦 一', 'ミウラハジメ', '甲病院', 5, '緑川県若葉市中央1', '0999-1', NULL),"
        " ('12', '医師''甲', 'イシコウ', '甲病院', 5, '自宅', '090-1', '2026/01/01 00:00:00'),"
        " ('120', '誰も知らない', 'ダレモ', NULL, NULL, NULL, NULL, NULL);"
        "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, nDouiIsiCd, cDouiIsiName1, cDouiIsiName2, "
        "nSisetsuCd) VALUES (1, 1, 1, '山田', 12, '医師''甲', NULL, 6), (1, 1, 2, '鈴木', 3, '三浦 一', "
        "'医師''甲', NULL), (1, 2, 1, '佐藤', 12, '医師''甲', NULL, NULL), (1, 1, 4, '高橋', 3, '三浦 一', "
        "NULL, "
        "NULL);"
        "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iIsiCd2) VALUES (1, 1, 2, '12');"
        "INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate, "
        "cIsiCd) "
        "VALUES (1, 1, 1, 20260101, 0, 0, '12'), (1, 1, 1, 20260701, 0, 0, '12'), (1, 2, 1, 20260101, 0, 0, "
        "'12'), "
        "(1, 1, 2, 20260101, 0, 0, '3')"_s);
}

void MasterPractice::writePostalCodes(const QByteArray &bytes, const QString &name) const {
    const QString place = folders.data() + u"/郵便番号"_s;
    QDir().mkpath(place);
    QFile file(place + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}
