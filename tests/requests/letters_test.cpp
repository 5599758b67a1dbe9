// The request letters' records, from a real database.

#include "print/documents/envelope.h"
#include "print/request_letter/letter_query.h"
#include "print/request_letter/letters.h"
#include "tests/list/list_fixture.h"

using namespace Qt::Literals::StringLiterals;

class LettersTest : public ListTest {
protected:
    LettersTest() {
        database.run(u"UPDATE SISETSU SET cYubinNo = '992-1011', cAddress1 = '若葉市1', cAddress2 = '２階'"
                     " WHERE nIDNo = 10;"
                     "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, 5, '佐藤'), (1, "
                     "1, 6, '鈴木');"
                     "INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, iType, cShamei1, cDaihyo, cTelNo) VALUES"
                     " (2, 1, 1, 0, '本社', '日向', '1'), (1, 1, 2, 1, '支店', '高橋', '2')"_s);
    }
    void add(int number, const QString &set = {}, const QString &more = {}) {
        if (orders.empty() || orders.back().row.patient.nIDNo != number)
            patient(number, u"利用者%1"_s.arg(number), u"ﾘ"_s, more);
        consent(number, u"2026/12/31"_s, set);
        orders.push_back({{{1, 1, number}, 20260601, 0, 0}, {}, false, u"a.wfd"_s});
    }
    // The letters' records by column.
    QList<QHash<QString, QString>> records() {
        Result<LetterSource> read = readLetterSource(database.db, environment.branch, orders);
        if (!read) {
            ADD_FAILURE() << read.reason().toStdString();
            return {};
        }
        source = std::move(*read);
        QList<QHash<QString, QString>> result;
        for (const Letter &letter : arrangeLetters(orders, source, options.grouped)) {
            const auto record = letterRecord(letter, orders, source, options);
            result.append(cells(letterColumns(), record));
        }
        return result;
    }
    static QHash<QString, QString> cells(const QStringList &columns, const std::vector<DataValue> &record) {
        EXPECT_EQ(qsizetype(record.size()), columns.size());
        QHash<QString, QString> cells;
        for (size_t i = 0; i < record.size(); ++i) {
            const auto *number = std::get_if<qint64>(&record[i]);
            cells[columns[qsizetype(i)]] = number ? QString::number(*number) : std::get<QString>(record[i]);
        }
        return cells;
    }
    /// What the first row's letter and envelope say of whom they go to.
    QStringList addressed() {
        const auto letter = records().value(0);
        const Envelope envelope = envelopeTo(letterAddressee(orders[0], source.rows[0], source));
        const auto cover = cells(envelopeColumns(), envelopeRecord(envelope));
        return {letter[u"医者名"_s],   letter[u"病院名"_s],   letter[u"病院郵便番号"_s],
                letter[u"病院住所"_s], cover[u"郵便番号1"_s], cover[u"郵便番号2"_s],
                cover[u"宛名施設"_s],  cover[u"宛名"_s],      cover[u"宛先住所１"_s],
                cover[u"宛先住所２"_s]};
    }
    /// Each column of a row gets its own name as its text.
    void nameColumns(const QString &table, const QStringList &columns, const QString &where = u"1 = 1"_s) {
        QStringList set;
        for (const QString &column : columns)
            set += u"%1 = '%1'"_s.arg(column);
        database.run(u"UPDATE %1 SET %2 WHERE %3"_s.arg(table, set.join(u", "), where));
    }

    std::vector<LetterOrder> orders;
    LetterSource source;
    LetterOptions options{QDate(2026, 11, 21), false, true, 0, u"よろしく"_s};
};

TEST_F(LettersTest, EachItemComesFromItsOwnColumn) {
    add(1, u"cIsiCd = '1'"_s, u"nTantou = 1, nTantou2 = 2, nTantou3 = 3, nTantou4 = 4, nTantou5 = 5"_s);
    database.run(u"DELETE FROM STAFF; DELETE FROM CORP WHERE iKyotenCd = 2"_s);
    for (int i = 1; i <= 5; ++i)
        database.run(
            u"INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, %1, 'nTantou%1')"_s.arg(
                i));
    nameColumns(u"RIYOUSHA"_s, {u"cName"_s, u"cAdress1"_s, u"cAdress2"_s});
    nameColumns(u"CORP"_s, {u"cShamei1"_s, u"cShamei2"_s, u"cAddress1"_s, u"cAddress2"_s, u"cTelNo"_s,
                            u"cFaxNo"_s, u"cDaihyo"_s});
    nameColumns(u"RIYOUSHA_DOUI_REC"_s,
                {u"cDouiByoumei"_s, u"cByoumeiM"_s, u"cByoumeiH"_s, u"cDouiIsiName"_s, u"cDouiIsiKikan"_s});
    const auto cell = records().value(0);
    EXPECT_EQ(cell[u"患者氏名"_s] + cell[u"患者住所"_s], u"cNamecAdress1　cAdress2"_s);
    EXPECT_EQ(cell[u"会社名"_s], u"cShamei1　cShamei2"_s);
    EXPECT_EQ(cell[u"会社住所"_s], u"cAddress1　cAddress2"_s);
    EXPECT_EQ(cell[u"会社電話番号"_s] + cell[u"会社FAX番号"_s] + cell[u"責任者"_s], u"cTelNocFaxNocDaihyo"_s);
    EXPECT_EQ(cell[u"傷病名"_s], u"cByoumeiM"_s) << "as the consent form has it";
    for (options.practitioner = 0; options.practitioner < mostPractitioners; ++options.practitioner)
        EXPECT_EQ(records().value(0)[u"主担当"_s], u"nTantou%1"_s.arg(options.practitioner + 1));
    options.practitioner = 0;
    database.run(u"UPDATE RIYOUSHA SET iSejutsuKubun = 1"_s);
    EXPECT_EQ(records().value(0)[u"傷病名"_s], u"cByoumeiH"_s);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cByoumeiH = NULL"_s);
    EXPECT_EQ(records().value(0)[u"傷病名"_s], u"cDouiByoumei"_s);

    // The doctor's own row, then the institution's, then what the consent noted, item by item.
    database.run(
        u"UPDATE DOCTOR SET cName = '医師', cKikan = '医師の機関', cYubinNo = '１１１-2222', cAddress1 ="
        " '医師1-1', cAddress2 = '医師棟 2F';"
        "UPDATE SISETSU SET cShamei1 = '機関', cYubinNo = '3334444', cAddress1 = '機関1-1', cAddress2 ="
        " '機関棟'; UPDATE RIYOUSHA_DOUI_REC SET cDouiIsiAdd = '記録 町1-1 記録棟　3F'"_s);
    EXPECT_EQ(addressed(), (QStringList{u"医師　先生御侍史"_s, u"医師の機関"_s, u"１１１-2222"_s,
                                        u"医師1-1　医師棟 2F"_s, u"111"_s, u"2222"_s, u"医師の機関"_s,
                                        u"書類ご担当者様"_s, u"医師1-1"_s, u"医師棟 2F"_s}));
    database.run(u"UPDATE DOCTOR SET cAddress1 = NULL, cAddress2 = ''"_s);
    EXPECT_EQ(addressed(), (QStringList{u"医師　先生御侍史"_s, u"医師の機関"_s, u"3334444"_s,
                                        u"機関1-1　機関棟"_s, u"333"_s, u"4444"_s, u"医師の機関"_s,
                                        u"書類ご担当者様"_s, u"機関1-1"_s, u"機関棟"_s}));
    database.run(
        u"UPDATE DOCTOR SET cKikan = ' ', cName = NULL; UPDATE SISETSU SET cAddress1 = NULL, cAddress2 ="
        " NULL"_s);
    EXPECT_EQ(addressed(),
              (QStringList{u"cDouiIsiName　先生御侍史"_s, u"機関"_s, u""_s, u"記録 町1-1　記録棟　3F"_s,
                           u""_s, u""_s, u"機関"_s, u"書類ご担当者様"_s, u"記録 町1-1"_s, u"記録棟　3F"_s}));
    database.run(u"DELETE FROM SISETSU; UPDATE RIYOUSHA_DOUI_REC SET cDouiIsiKikan = NULL"_s);
    EXPECT_EQ(addressed().sliced(6, 2), (QStringList{u""_s, u"cDouiIsiName　様"_s}))
        << "a doctor without an institution";
}

TEST_F(LettersTest, ARecordHoldsWhatTheLetterSays) {
    add(1, u"cDouiByoumei = '脳梗塞', tUpDateTime = '2026/11/01 09:00:00'"_s,
        u"tBirthday = '1950/03/10', tSyoryoDay = '2020/01/05', iSexKubun = 2, nTantou = 5, nTantou2 = 6,"
        " cAdress1 = '若葉市9'"_s);
    const auto cell = records().value(0);
    const QHash<QString, QString> expected{{u"出力日"_s, u"令和08年11月21日"_s},
                                           {u"医者名"_s, u"阿部　先生御侍史"_s},
                                           {u"施術開始日"_s, u"令和02年01月05日"_s},
                                           {u"生年月日"_s, u"昭和25年03月10日"_s},
                                           {u"要加療期間自"_s, u"令和08年06月01日"_s},
                                           {u"要加療期間至"_s, u"令和08年12月31日"_s},
                                           {u"同意再取得日"_s, u"令和09年01月01日"_s},
                                           {u"利用者ID"_s, u"1"_s},

                                           {u"医師まとめ"_s, u"0"_s},
                                           {u"まとめ1"_s, u""_s},
                                           {u"施術区分"_s, u"(マッサージ)"_s},
                                           {u"生年月日ymd"_s, u"25年3月10日"_s},
                                           {u"生年月日元号"_s, u"S"_s},
                                           {u"性別"_s, u"女"_s},
                                           {u"備考"_s, u"よろしく"_s},
                                           {u"施術者印字"_s, u"1"_s},
                                           {u"病院住所"_s, u"若葉市1　２階"_s}};
    for (auto it = expected.begin(); it != expected.end(); ++it)
        EXPECT_EQ(cell[it.key()], it.value()) << it.key().toStdString();

    orders[0].toHospital = true;
    orders[0].doctor = u"2"_s;
    database.run(u"UPDATE RIYOUSHA SET iSejutsuKubun = 1; UPDATE RIYOUSHA_DOUI_REC SET iHKSyobyou01Flg = 1,"
                 " iHKSyobyou05Flg = 1, iHKSyobyou07Flg = 1, cSyoujyouSonotaStr = '肩こり',"
                 " tSaiDouiDay = '2026/12/20'"_s);
    const auto other = records().value(0);
    EXPECT_EQ(other[u"傷病名"_s], u"神経痛、腰痛症、肩こり"_s);
    EXPECT_EQ(other[u"施術区分"_s], u"(鍼灸)"_s);
    EXPECT_EQ(other[u"同意再取得日"_s], u"令和08年12月20日"_s);
    EXPECT_EQ(other[u"病院名"_s], u"朝日医院　御中"_s) << "of the doctor who is asked";
    EXPECT_EQ(other[u"医者名"_s], u""_s) << "a letter has one honorific";
    orders[0].row.iHenkeiFlg = 1;
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iHenkeiFlg = 1"_s);
    EXPECT_EQ(records().value(0)[u"同意再取得日"_s], u"令和08年12月20日"_s)
        << "the massage's, as in the list";
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tDouiDayTempHenkei = '2026/12/21'"_s);
    EXPECT_EQ(records().value(0)[u"同意再取得日"_s], u"令和08年12月21日"_s);
    orders[0].toHospital = false;
    database.run(u"UPDATE DOCTOR SET cName = NULL"_s);
    EXPECT_EQ(records().value(0)[u"病院名"_s], u"朝日医院　御中"_s) << "the doctor is not known";
}

TEST_F(LettersTest, EmptyStaysEmpty) {
    add(1, u"cIsiCd = NULL, tDouiKaryoS = NULL"_s);
    const auto cell = records().value(0);
    for (const QString &column :
         {u"医者名"_s, u"生年月日"_s, u"生年月日ymd"_s, u"生年月日元号"_s, u"要加療期間自"_s, u"性別"_s,
          u"主担当"_s, u"傷病名"_s, u"病院名"_s, u"病院住所"_s})
        EXPECT_EQ(cell[column], u""_s) << column.toStdString();
    EXPECT_EQ(withoutPractitioner(source, options), QStringList{u"1 利用者1"_s});
    database.run(
        u"UPDATE RIYOUSHA_DOUI_REC SET cIsiCd = '99', cDouiIsiName = '昔', cDouiIsiKikan = '旧院'"_s);
    const auto old = records().value(0);
    EXPECT_EQ(old[u"医者名"_s], u"昔　先生御侍史"_s) << "no longer in the master";
    EXPECT_EQ(old[u"病院名"_s], u"旧院"_s);
}

TEST_F(LettersTest, TenPatientsOfADoctorShareALetter) {
    options.grouped = true;
    for (int number = 1; number <= 10; ++number)
        add(number, {}, u"tBirthday = '1950/03/10', nTantou = 5"_s);
    auto all = records();
    ASSERT_EQ(all.size(), 1);
    EXPECT_EQ(all[0][u"医師まとめ"_s], u"1"_s);
    EXPECT_EQ(all[0][u"主担当"_s], u"佐藤"_s);
    database.run(u"UPDATE RIYOUSHA SET nTantou = 6 WHERE nIDNo = 10"_s);
    EXPECT_EQ(records()[0][u"主担当"_s], u""_s) << "not the practitioner of all";
    database.run(u"UPDATE RIYOUSHA SET iSejutsuKubun = 1 WHERE nIDNo = 10"_s);
    EXPECT_EQ(records().size(), 2) << "a letter speaks of one treatment";
    database.run(u"UPDATE RIYOUSHA SET iSejutsuKubun = 0"_s);
    EXPECT_EQ(all[0][u"まとめ1"_s], u"利用者1 様　昭和25年3月10日生　要加療期間 令和8年12月31日まで"_s);
    EXPECT_TRUE(all[0][u"まとめ10"_s].startsWith(u"利用者10 "_s));
    add(11);
    add(12, u"cIsiCd = '2'"_s);
    add(13, u"cIsiCd = NULL"_s);
    add(14, u"cIsiCd = NULL"_s);
    add(15);
    add(16);
    orders[14].layout = u"b.wfd"_s;
    orders[15].toHospital = true;
    all = records();
    QStringList letters;
    for (const auto &cells : all)
        letters.append(cells[u"患者氏名"_s] + cells[u"医師まとめ"_s]);
    EXPECT_EQ(letters, (QStringList{u"利用者11"_s, u"利用者110"_s, u"利用者120"_s, u"利用者130"_s,
                                    u"利用者140"_s, u"利用者150"_s, u"利用者160"_s}))
        << "another doctor, none, another layout and another addressee stand alone";
}

TEST_F(LettersTest, ALetterSpeaksOfPatientsOfOneInstitution) {
    options.grouped = true;
    const QString noted = u"cIsiCd = '99', cDouiIsiName = '昔', cDouiIsiKikan = '旧院', cDouiIsiAdd = '%1'"_s;
    add(1, noted.arg(u"若葉市1"_s));
    add(2, noted.arg(u"青葉市2"_s));
    add(3, noted.arg(u"若葉市1"_s));
    add(4, noted.arg(u"若葉市1"_s) + u", cDouiIsiKikan = '新院'"_s);
    QStringList letters;
    for (const auto &cells : records())
        letters.append(cells[u"利用者ID"_s] + cells[u"病院住所"_s] + cells[u"病院名"_s] +
                       cells[u"医師まとめ"_s]);
    EXPECT_EQ(letters, (QStringList{u"1若葉市1旧院1"_s, u"2青葉市2旧院0"_s, u"4若葉市1新院0"_s}));
}

TEST_F(LettersTest, OfTwoRowsMarkedNewestTheLaterOneCounts) {
    add(1);
    add(1, u"nDate = 20261101, cDouiByoumei = '新しい'"_s);
    orders.back().row.nDate = 20261101;
    const auto all = records();
    ASSERT_EQ(all.size(), 1);
    EXPECT_EQ(all[0][u"傷病名"_s], u"新しい"_s);
}
