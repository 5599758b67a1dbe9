#include "tests/list/list_fixture.h"

using namespace Qt::Literals::StringLiterals;

ListTest::ListTest() {
    database.run(u"INSERT INTO SISETSU (nIDNo, cShamei1, cShameiKana1, cDouiIrai) VALUES"
                 " (10, '中央病院', 'ﾁｭｳｵｳ', 'FAX'), (20, '朝日医院', 'ｱｻﾋ', NULL);"
                 "INSERT INTO DOCTOR (cIDno, cName, cKikan, iSisetsuCode) VALUES"
                 " ('1', '阿部', '中央病院', 10), ('2', '馬場', '朝日医院', 20);"_s);
}

void ListTest::patient(int number, const QString &name, const QString &kana, const QString &more) {
    database.run(u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iSejutsuKubun)"
                 " VALUES (1, 1, %1, '%2', '%3', 0);"_s.arg(number)
                     .arg(name, kana));
    if (!more.isEmpty())
        database.run(u"UPDATE RIYOUSHA SET %1 WHERE nIDNo = %2"_s.arg(more).arg(number));
}

void ListTest::consent(int number, const QString &end, const QString &set) {
    database.run(u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg,"
                 " nHenkeiDouiDate, iNewestFlg, tDouiDay, tDouiKaryoS, tDouiKaryoE, cIsiCd)"
                 " VALUES (1, 1, %1, 20260601, -1, 0, 1, '2026/06/01', '2026/06/01', '%2', '1')"_s.arg(number)
                     .arg(end));
    if (!set.isEmpty())
        database.run(u"UPDATE RIYOUSHA_DOUI_REC SET %1 WHERE iHenkeiFlg = -1"_s.arg(set));
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iHenkeiFlg = 0 WHERE iHenkeiFlg = -1"_s);
}

QStringList ListTest::found() {
    EXPECT_EQ(list.iSearch(), 0) << list.sErrMsg().toStdString();
    QStringList numbers;
    for (int row = 0; row < model.rowCount(); ++row) {
        const int record = model.recordOfRow(row);
        numbers.append(QString::number(model.records().key(record).patient.nIDNo) +
                       (model.records().isDeformity(record) ? u"h"_s : QString()));
    }
    return numbers;
}

int ListTest::recordOf(int number, bool deformity) const {
    for (int record = 0; record < model.records().count(); ++record)
        if (model.records().key(record).patient.nIDNo == number &&
            model.records().isDeformity(record) == deformity)
            return record;
    ADD_FAILURE() << "no row of patient " << number;
    return 0;
}

QModelIndex ListTest::cell(int number, ListColumn column, bool deformity) const {
    return model.index(model.rowOfRecord(recordOf(number, deformity)), int(column));
}

bool ListTest::edit(int number, ListColumn column, const QVariant &value, bool deformity) {
    return model.setData(cell(number, column, deformity), value, Qt::EditRole);
}

bool ListTest::tick(int number, ListColumn column, bool on, bool deformity) {
    return model.setData(cell(number, column, deformity), on ? Qt::Checked : Qt::Unchecked,
                         Qt::CheckStateRole);
}
