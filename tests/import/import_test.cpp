#include "tests/history/replayed_log.h"
#include "tests/import/import_fixture.h"

#include "app/base/settings.h"
#include "import/import_values.h"
#include "tests/support/wrapped_provider.h"

#include <QFile>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray bytesOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST_F(ImportTest, ColumnsAreRecognisedInTheWaysPeopleWriteThem) {
    const auto recognised = [&](ImportKind kind, const QString &headings) {
        const ImportJob read = job(kind, headings + u"\n1"_s);
        QStringList columns;
        for (const int field : read.columns.fields)
            columns += field < 0 ? u"-"_s : read.description().fields[size_t(field)].column;
        return columns.join(u' ');
    };
    EXPECT_EQ(recognised(ImportKind::Patients,
                         u"利用者ＩＤ,利用者 氏名,ふりがな,生年月日(和暦),ＴＥＬ,〒,住所１,血液型"_s),
              u"nIDNo cName cNameKana - cTelNo cYubinNo cAdress1 -"_s);
    EXPECT_EQ(recognised(ImportKind::Patients, u"No.,姓,名,セイ,メイ,【誕生日】,電話番号,電話"_s),
              u"nIDNo cName cName cNameKana cNameKana tBirthday cTelNo -"_s);
    EXPECT_EQ(recognised(ImportKind::Doctors, u"医師名,ﾌﾘｶﾞﾅ,病院名,メールアドレス"_s),
              u"cName cNameKana iSisetsuCode cMail1"_s);
    EXPECT_EQ(recognised(ImportKind::Facilities, u"施設名,フリガナ,TEL,FAX番号"_s),
              u"cShamei1 cShameiKana1 cTelNo cFaxNo"_s);
    const ImportJob bare = job(ImportKind::Patients, u"1,山田,ヤマダ\n2,森,モリ"_s);
    EXPECT_FALSE(bare.columns.headed);
    EXPECT_TRUE(whyColumnsFail(bare.description(), bare.columns).contains(u"「氏名」の列"_s));
}

TEST_F(ImportTest, CellsAreReadAsWrittenOrRefused) {
    const ImportDescription &patients = describeImport(ImportKind::Patients);
    const auto read = [&](const QString &column, const QString &text, bool serials = false) {
        const CellReading reading = readCell(patients.fields[size_t(patients.field(column))], text, serials);
        return reading.fault.isEmpty() ? reading.value : u"×"_s;
    };
    for (const QString &day : {u"1945/1/2"_s, u"昭和20年1月2日"_s, u"昭20.1.2"_s, u"S200102"_s,
                               u"㍼２０年１月２日"_s, u"19450102"_s, u"1945-01-02 00:00:00"_s,
                               u"西暦1945年1月2日生"_s, u"1945/01/02(火)"_s, u"Ｓ２０．１．２"_s})
        EXPECT_EQ(read(u"tBirthday"_s, day), u"1945/01/02"_s) << day.toStdString();
    EXPECT_EQ(read(u"tBirthday"_s, u"16439"_s, true), u"1945/01/02"_s);
    for (const QString &day :
         {u"16439"_s, u"45/1/2"_s, u"1945/2/30"_s, u"平成20年"_s, u"昭和70年1月1日"_s, u"0020/01/02"_s})
        EXPECT_EQ(read(u"tBirthday"_s, day), u"×"_s) << day.toStdString();
    EXPECT_EQ(read(u"cTelNo"_s, u"(0999) 00-1"_s), u"(0999) 00-1"_s);
    EXPECT_EQ(read(u"cYubinNo"_s, u"〒９９２－１０１０"_s), u"992-1010"_s);
    EXPECT_EQ(read(u"iSexKubun"_s, u"女性"_s) + read(u"iSexKubun"_s, u"ｍ"_s) + read(u"iSexKubun"_s, u"？"_s),
              u"21×"_s);
    EXPECT_EQ(read(u"iKaigodo"_s, u"要介護３"_s), u"5"_s);
    EXPECT_EQ(read(u"cName"_s, QString(20, u'山')).size(), 20);
    EXPECT_EQ(read(u"cName"_s, QString(21, u'山')), u"×"_s);
    EXPECT_EQ(read(u"nIDNo"_s, u"００７"_s) + read(u"nIDNo"_s, u"0"_s) + read(u"nIDNo"_s, u"A1"_s), u"7××"_s);
}

TEST_F(ImportTest, TheTrialSaysOfEachRowWhatWouldBecomeOfIt) {
    EXPECT_EQ(
        tried(job(ImportKind::Patients,
                  u"氏名,カナ,生年月日,電話,担当,医師,病院\n"
                  "山﨑　花子,ヤマザキ ハナコ,S20.1.2,0999-1,,,\n"
                  "新田　一,,1950/1/1,,高橋 健,3,\n"
                  "佐藤太郎,,,,,,\n"
                  "さくら,,1960/1/1,,,,\n"
                  "林 茂（ハヤシ　シゲル）,,1960/1/2,,,森花,甲病院\n"
                  "森　正,,1960/1/3,,誰か,森花,\n"
                  ",ナナシ,1950/1/1,,,,\n"
                  "新田一,,1950/01/01,1,,,\n"_s,
                  true)),
        (QStringList{
            u"同じ"_s, u"新規"_s,
            u"× 同じ名前の利用者（番号 8）と同じかどうか決められません。番号かカナ・生年月日を入れてください"_s,
            u"新規 カナを氏名から取りました：さくら"_s, u"新規 カナを氏名から取りました：ハヤシ　シゲル"_s,
            u"× 「担当「誰か」は施術者に登録されていません"_s.mid(0, 2) +
                u"担当「誰か」は施術者に登録されていません。"
                "医師「森花」が2件あります（番号 4、12）。番号で指定してください"_s,
            u"× 氏名・名称がありません"_s, u"× 3 行目と同じ利用者です"_s}));
    // A variant of a name's sign is the same person and a change; so is what the number says.
    EXPECT_EQ(tried(job(ImportKind::Patients,
                        u"番号,氏名,カナ,生年月日,電話\n,山崎花子,,S20.1.2,0999-2\n8,佐藤 タロウ,,,\n"
                        "8,佐藤太郎,サトウタロウ,1940/1/1,\n77,やまざきはなこ,やまざきはなこ,S20.1.2,\n"
                        ",佐藤太郎,サトウジロウ,,\n,他院花子,タインハナコ,1930/1/1,\n"_s)),
              (QStringList{u"変更 氏名：山﨑　花子 → 山崎花子　電話：0999-1 → 0999-2"_s,
                           u"× 番号 8 は別の利用者が使っています"_s, u"変更 生年月日：1940/01/01"_s,
                           u"新規"_s, u"新規 同じ名前の利用者があります（番号 8）"_s, u"新規"_s}));
}

TEST_F(ImportTest, WhatWasTriedIsWrittenAsAWhole) {
    const ImportJob mine =
        job(ImportKind::Patients,
            u"氏名,カナ,生年月日,電話,医師,病院,施設,担当,施術,郵便番号\n"
            "新田　一,ニッタ　ハジメ,1950/1/1,０９９９－１,3,甲病院,乙荘,高橋健,鍼灸,9921010\n"
            "山﨑花子,,S20.1.2,0999-2,,甲病院,,,,\n"
            "森 正,モリ タダシ,1960/1/3,,森花,丙医院,,,,\n"_s,
            true);
    EXPECT_EQ(tried(mine).value(2), u"× 病院「丙医院」は医療機関・施設に登録されていません"_s);
    EXPECT_EQ(written(mine).kind, ImportOutcome::Refused);
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM RIYOUSHA"_s), u"3"_s);
    ImportJob lenient = mine;
    lenient.unknown = UnknownReference::LeftEmpty;
    const ImportOutcome done = written(lenient);
    ASSERT_EQ(done.kind, ImportOutcome::Done) << done.text.toStdString();
    EXPECT_EQ(
        patients(
            u"cName, cTelNo, tBirthday, nDouiIsiCd, cDouiIsiKikan1, cSisetsuName, nTantou, iSejutsuKubun, cYubinNo"_s),
        u"7|山﨑　花子|0999-2|1945/01/02|NULL|NULL|NULL|NULL|NULL|NULL\n"
        "8|佐藤　太郎|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL\n"
        "9|他院　花子|NULL|1930/01/01|NULL|NULL|NULL|NULL|NULL|NULL\n"
        "9|新田　一|０９９９－１|1950/01/01|3|甲病院|乙荘|9|1|9921010\n"
        "10|森 正|NULL|1960/01/03|12|丙医院|NULL|NULL|0|NULL"_s);
    EXPECT_EQ(database.rows(u"SELECT nIDNo, iSisetsuCode FROM RIYOUSHA_SUB ORDER BY nIDNo"_s),
              (QStringList{u"7|5"_s, u"9|5"_s, u"10|NULL"_s}));
    EXPECT_EQ(database.rows(u"SELECT nIDNo, iDouiNo FROM DOUIKIROKU ORDER BY nIDNo"_s),
              (QStringList{u"9|1"_s, u"10|1"_s}));
    ASSERT_EQ(
        written(job(ImportKind::Patients, u"番号,氏名,生年月日\n,丙丁,1950/3/3\n11,甲乙,1950/2/2\n"_s)).kind,
        ImportOutcome::Done);
    EXPECT_EQ(database.value(u"SELECT nIDNo FROM RIYOUSHA WHERE cName = '丙丁'"_s), u"12"_s);
    EXPECT_EQ(tried(lenient).join(u','), u"同じ,同じ,同じ 病院「丙医院」は登録がないため空にします"_s);
}

TEST_F(ImportTest, WhatIsLeftIsMendedAndReadAgain) {
    const QString restPath = database.folder() + u"/残り.csv"_s;
    const ImportJob first =
        job(ImportKind::Patients, u"氏名\t生年月日\t備考\r\n新田　一\t1950/1/1\t\r\n"
                                  "森 正\t昨日\t\"a\r\nb\"\"c\"\r\n氏名\t生年月日\t備考\r\n\t1950/1/1"_s);
    const ImportOutcome done = written(first, ImportRows::RightOnes);
    ASSERT_EQ(done.kind, ImportOutcome::Done) << done.text.toStdString();
    EXPECT_EQ(done.plan.repeatedHeadings, 1);
    EXPECT_EQ(done.restPath, restPath);
    const ImportJob again = jobOf(ImportKind::Patients, bytesOf(restPath));
    EXPECT_EQ(again.file.encoding(), CsvEncoding::CodePage932);
    EXPECT_EQ(tried(again),
              (QStringList{u"× 「生年月日」が日付ではありません：昨日"_s, u"× 氏名・名称がありません"_s}));
    QByteArray mended = bytesOf(restPath);
    mended.replace("\x8D\xF0\x93\xFA\t", "S30.1.1\t");
    const ImportOutcome second = written(jobOf(ImportKind::Patients, mended), ImportRows::RightOnes);
    EXPECT_EQ(database.value(u"SELECT tBirthday || cDouiItiranBikou FROM RIYOUSHA WHERE nIDNo = 10"_s),
              u"1955/01/01a\r\nb\"c"_s);
    EXPECT_EQ(bytesOf(second.restPath).count('\n'), 2) << "heading and one row, one reason each";
    EXPECT_EQ(jobOf(ImportKind::Patients, bytesOf(second.restPath)).columns.fields.size(), 4U);
    EXPECT_EQ(second.plan.missing, QStringList()) << "no database has the reasons";
}

TEST_F(ImportTest, MastersFollowTheirOwnRules) {
    const ImportJob doctors =
        job(ImportKind::Doctors,
            u"番号,医師名,病院,住所\n3,三浦　一,甲病院,新町9\n,三浦一,丁医院,\n,森花,丙医院,港1\n"_s);
    EXPECT_EQ(
        tried(doctors),
        (QStringList{
            u"変更 住所：中央1 → 新町9"_s,
            u"新規 医療機関「丁医院」は医療機関・施設マスタにないため、名称だけを入れます　"
            "同じ名前の医師があります（番号 3）"_s,
            u"変更 住所：港1　医療機関「丙医院」は医療機関・施設マスタにないため、名称だけを入れます"_s}));
    database.run(u"UPDATE RIYOUSHA SET nDouiIsiCd = 3 WHERE nIDNo = 7"_s);
    ReplayedLog log(database.db);
    ASSERT_EQ(written(doctors).kind, ImportOutcome::Done);
    EXPECT_EQ(database.rows(u"SELECT cIDNo, cName, cKikan, cAddress1 FROM DOCTOR ORDER BY 1"_s),
              (QStringList{u"12|森　花|丙医院|港1"_s, u"13|三浦一|丁医院|NULL"_s, u"3|三浦 一|甲病院|新町9"_s,
                           u"4|森 花|甲病院|中央1"_s}));
    EXPECT_EQ(database.value(u"SELECT cDouiIsiAdd1 FROM RIYOUSHA WHERE nIDNo = 7"_s), u"新町9"_s);
    for (const ImportKind kind :
         {ImportKind::Facilities, ImportKind::Staff, ImportKind::Counsellors, ImportKind::CareManagers}) {
        const ImportJob some = job(kind, u"氏名,カナ,TEL,郵便番号,住所\n甲,コウ,1,2,3\n乙,オツ,1,2,3\n"_s);
        ASSERT_EQ(written(some).kind, ImportOutcome::Done) << int(kind);
        EXPECT_EQ(tried(some), (QStringList{u"同じ"_s, u"同じ"_s})) << int(kind);
    }
    EXPECT_EQ(log.disagreement().toStdString(), "");
    EXPECT_EQ(log.operations(), QStringList{u"データの取込"_s});
}

TEST_F(ImportTest, TwoAtOnceGiveNoNumberTwiceAndOverwriteNothing) {
    ImportJob mine =
        job(ImportKind::Patients, u"氏名,生年月日,電話\n新田一,1950/1/1,\n山﨑花子,S20.1.2,1\n"_s, true);
    ImportJob theirs = job(ImportKind::Patients, u"氏名,生年月日\n森正,1960/1/3\n"_s);
    const Result<ImportPlan> shown = tryImport(mine, database.db, folders);
    std::vector<std::thread> programs;
    std::array<ImportOutcome, 2> outcomes;
    for (size_t i = 0; i < 2; ++i)
        programs.emplace_back([&, i] {
            cT_ADODB db;
            db.iInit(database.connectionString());
            db.iConnect();
            const ImportJob &own = i == 0 ? mine : theirs;
            outcomes[i] = writeImport(own, db, folders, *tryImport(own, db, folders), ImportRows::All, {});
        });
    for (std::thread &program : programs)
        program.join();
    EXPECT_EQ(outcomes[0].kind, ImportOutcome::Done) << outcomes[0].text.toStdString();
    EXPECT_EQ(outcomes[1].kind, ImportOutcome::Done) << outcomes[1].text.toStdString();
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM RIYOUSHA WHERE iKyotenEb = 1 AND nIDNo IN (9, 10)"_s),
              u"2"_s);
    // The trial no longer holds: nothing is written, and how it is now is given.
    database.run(u"UPDATE RIYOUSHA SET cTelNo = '2' WHERE nIDNo = 7"_s);
    const ImportOutcome late = writeImport(mine, database.db, folders, *shown, ImportRows::All, {});
    EXPECT_EQ(late.kind, ImportOutcome::Overtaken);
    EXPECT_EQ(said(late.plan), (QStringList{u"同じ"_s, u"変更 電話：2 → 1"_s}));
    EXPECT_EQ(database.value(u"SELECT cTelNo FROM RIYOUSHA WHERE nIDNo = 7"_s), u"2"_s);
}

TEST_F(ImportTest, ItemsThatTheDatabaseLacksAreNamedAndLeftOut) {
    database.run(u"ALTER TABLE RIYOUSHA DROP COLUMN iKaigodo"_s);
    const ImportJob file = job(ImportKind::Patients, u"氏名,生年月日,要介護度\n新田一,1950/1/1,要介護1\n"_s);
    const Result<ImportPlan> shown = tryImport(file, database.db, folders);
    ASSERT_TRUE(shown) << shown.reason().toStdString();
    EXPECT_EQ(shown->missing, QStringList(u"要介護度"_s));
    ASSERT_EQ(written(file).kind, ImportOutcome::Done);
    EXPECT_EQ(tried(file), QStringList(u"同じ"_s));
}

TEST_F(ImportTest, PatientsOfAnotherProgramAreLeftToIt) {
    ASSERT_EQ(Settings(folders).iSwitch(Setting::利用者登録, false), 0);
    for (const auto &[kind, ours] :
         {std::pair(ImportKind::Patients, false), std::pair(ImportKind::Staff, false),
          std::pair(ImportKind::Doctors, true), std::pair(ImportKind::CareManagers, true)})
        EXPECT_EQ(bool(tryImport(job(kind, u"氏名\nあお\n"_s), database.db, folders)), ours) << int(kind);
}

TEST_F(ImportTest, WhatTheDatabaseWouldNotKeepIsRefused) {
    // A server with texts in a code page of its own.
    cT_ADODB lossy([](const QString &text) {
        return std::make_unique<WrappedProvider>(makeProvider(text), [](QString &sql) {
            if (!sql.startsWith(u"SELECT"))
                sql.replace(u"𠮷"_s, u"?"_s);
            return true;
        });
    });
    lossy.iInit(database.connectionString());
    const ImportJob patients =
        job(ImportKind::Patients,
            u"番号,氏名,生年月日\n60,𠮷田一,1950/1/1\n61,森正,1960/1/3\n7,山﨑　花子,S20.1.2\n"_s, true);
    const ImportJob consents = job(
        ImportKind::Consents, u"利用者番号,同意日,傷病名,右上肢\n7,R8.5.1,腰痛,○\n61,R8.5.1,𠮷,○\n"_s, true);
    for (const ImportJob *own : {&patients, &consents}) {
        const Result<ImportPlan> shown = tryImport(*own, lossy, folders);
        ASSERT_TRUE(shown);
        EXPECT_EQ(shown->count(PlannedRow::Refused), 0) << said(*shown).join(u'/').toStdString();
        const auto write = [&](ImportRows rows) {
            return writeImport(*own, lossy, folders, *shown, rows, database.folder() + u"/残り.csv"_s);
        };
        const ImportOutcome none = write(ImportRows::All);
        EXPECT_EQ(none.kind, ImportOutcome::Refused);
        EXPECT_EQ(none.plan.count(PlannedRow::Refused), 1);
        const ImportOutcome right = write(ImportRows::RightOnes);
        EXPECT_EQ(right.kind, ImportOutcome::Done) << right.text.toStdString();
        EXPECT_TRUE(QString::fromUtf8(bytesOf(right.restPath)).contains(u"データベースに保存できない文字"_s));
    }
    EXPECT_EQ(database.rows(u"SELECT nIDNo FROM RIYOUSHA WHERE nIDNo > 50"_s), QStringList(u"61"_s));
    EXPECT_EQ(database.rows(u"SELECT nIDNo FROM RIYOUSHA_DOUI_REC"_s), QStringList(u"7"_s));
}

TEST_F(ImportTest, WhateverFailsLeavesEverythingAsItWas) {
    const ImportJob mine =
        job(ImportKind::Patients, u"氏名,生年月日,電話\n新田一,1950/1/1,\n山﨑花子,S20.1.2,1\n,1950/1/1,\n"_s,
            true);
    const Result<ImportPlan> shown = tryImport(mine, database.db, folders);
    const QString path = database.folder() + u"/残り.csv"_s, before = patients(u"cName, cTelNo"_s);
    const auto outcomeWhereFails = [&](const ImportJob &own, const ImportPlan &plan, int nth, int times) {
        int statement = 0;
        cT_ADODB db([&](const QString &text) {
            return std::make_unique<WrappedProvider>(makeProvider(text), [&, nth, times](QString &) {
                ++statement;
                return statement < nth || statement >= nth + times;
            });
        });
        db.iInit(database.connectionString());
        db.iConnect();
        return writeImport(own, db, folders, plan, ImportRows::RightOnes, path);
    };
    int failures = 0;
    for (int nth = 1; nth < 40; ++nth) {
        const ImportOutcome outcome = outcomeWhereFails(mine, *shown, nth, 1000);
        if (outcome.kind == ImportOutcome::Done)
            break;
        ++failures;
        EXPECT_EQ(patients(u"cName, cTelNo"_s), before) << nth;
        EXPECT_FALSE(QFile::exists(path)) << nth;
        EXPECT_TRUE(outcome.text.contains(WrappedProvider::description)) << outcome.text.toStdString();
    }
    // What fails once, as a deadlock's victim does, is done again.
    const ImportJob other = job(ImportKind::Patients, u"氏名,生年月日\n森正,1960/1/3\n"_s);
    EXPECT_EQ(outcomeWhereFails(other, *tryImport(other, database.db, folders), 4, 1).kind,
              ImportOutcome::Done);
    EXPECT_GT(failures, 5);
    EXPECT_NE(patients(u"cName, cTelNo"_s), before);
    const ImportOutcome nowhere =
        written(job(ImportKind::Patients, u"氏名\nあお\n,\n"_s), ImportRows::RightOnes);
    EXPECT_EQ(nowhere.kind, ImportOutcome::Done);
}
