// The request letters' records, from a real database.

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
        patient(number, u"利用者%1"_s.arg(number), u"ﾘ"_s, more);
        consent(number, u"2026/12/31"_s, set);
        orders.push_back({{{1, 1, number}, 20260601, 0, 0}, {}, false, u"a.wfd"_s});
    }
    // The letters' records by column.
    QList<QHash<QString, QString>> records() {
        EXPECT_EQ(readLetterSource(database.db, environment.branch, orders, source), 0);
        QList<QHash<QString, QString>> result;
        for (const Letter &letter : arrangeLetters(orders, source, options.grouped)) {
            const auto record = letterRecord(letter, orders, source, options);
            EXPECT_EQ(qsizetype(record.size()), letterColumns().size());
            QHash<QString, QString> cells;
            for (size_t i = 0; i < record.size(); ++i) {
                const auto *number = std::get_if<qint64>(&record[i]);
                cells[letterColumns()[qsizetype(i)]] =
                    number ? QString::number(*number) : std::get<QString>(record[i]);
            }
            result.append(cells);
        }
        return result;
    }

    std::vector<LetterOrder> orders;
    LetterSource source;
    LetterOptions options{QDate(2026, 11, 21), false, true, 0, u"よろしく"_s};
};

TEST_F(LettersTest, ARecordHoldsWhatTheLetterSays) {
    add(1, u"cDouiByoumei = '脳梗塞', tUpDateTime = '2026/11/01 09:00:00'"_s,
        u"tBirthday = '1950/03/10', tSyoryoDay = '2020/01/05', iSexKubun = 2, nTantou = 5, nTantou2 = 6,"
        " cAdress1 = '若葉市9'"_s);
    const auto cell = records().value(0);
    const QHash<QString, QString> expected{{u"出力日"_s, u"令和08年11月21日"_s},
                                           {u"医者名"_s, u"阿部　先生御侍史"_s},
                                           {u"施術開始日"_s, u"令和02年01月05日"_s},
                                           {u"患者氏名"_s, u"利用者1"_s},
                                           {u"生年月日"_s, u"昭和25年03月10日"_s},
                                           {u"会社名"_s, u"支店"_s},
                                           {u"要加療期間自"_s, u"令和08年06月01日"_s},
                                           {u"要加療期間至"_s, u"令和08年12月31日"_s},
                                           {u"同意再取得日"_s, u"令和09年01月01日"_s},
                                           {u"利用者ID"_s, u"1"_s},
                                           {u"病院名"_s, u"中央病院"_s},
                                           {u"医師まとめ"_s, u"0"_s},
                                           {u"まとめ1"_s, u""_s},
                                           {u"施術区分"_s, u"(マッサージ)"_s},
                                           {u"生年月日ymd"_s, u"25年3月10日"_s},
                                           {u"生年月日元号"_s, u"S"_s},
                                           {u"性別"_s, u"女"_s},
                                           {u"備考"_s, u"よろしく"_s},
                                           {u"主担当"_s, u"佐藤"_s},
                                           {u"傷病名"_s, u"脳梗塞"_s},
                                           {u"施術者印字"_s, u"1"_s},
                                           {u"病院郵便番号"_s, u"992-1011"_s},
                                           {u"病院住所"_s, u"若葉市1　２階"_s}};
    for (auto it = expected.begin(); it != expected.end(); ++it)
        EXPECT_EQ(cell[it.key()], it.value()) << it.key().toStdString();

    options.practitioner = 1;
    orders[0].toHospital = true;
    orders[0].doctor = u"2"_s;
    database.run(u"UPDATE RIYOUSHA SET iSejutsuKubun = 1; UPDATE RIYOUSHA_DOUI_REC SET iHKSyobyou01Flg = 1,"
                 " iHKSyobyou05Flg = 1, iHKSyobyou07Flg = 1, cSyoujyouSonotaStr = '肩こり',"
                 " tSaiDouiDay = '2026/12/20'"_s);
    const auto other = records().value(0);
    EXPECT_EQ(other[u"傷病名"_s], u"神経痛、腰痛症、肩こり"_s);
    EXPECT_EQ(other[u"施術区分"_s], u"(鍼灸)"_s);
    EXPECT_EQ(other[u"同意再取得日"_s], u"令和08年12月20日"_s);
    EXPECT_EQ(other[u"医者名"_s], u"馬場　先生御侍史"_s) << "the doctor who is asked";
    EXPECT_EQ(other[u"病院名"_s], u"朝日医院　御中"_s);
    EXPECT_EQ(other[u"主担当"_s], u"鈴木"_s);
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
