#include "tests/import/import_fixture.h"

#include "import/import_types.h"
#include "import/template_file.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class ConsentImports : public ImportTest {
protected:
    ConsentImports() {
        database.run(
            u"UPDATE RIYOUSHA SET iSejutsuKubun = 1 WHERE nIDNo = 8;"
            "INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate,"
            " iReceptDisabledFlg, iNewestFlg, tDouiDay, tDouiKaryoS, tDouiKaryoE, cDouiByoumei, iSejutuBui2, "
            "cIsiCd,"
            " cDouiIsiName, iGetFlg, cItiranBikou) VALUES (1, 1, 7, 20251120, 0, 0, 0, 1, '2025/11/20', "
            "'2025/12/01',"
            " '2026/05/31', '脳梗塞', 1, '3', '三浦 一', 1, '覚え')"_s);
    }
    QStringList consents(const QString &columns) const {
        return database.rows(u"SELECT nIDNo, nDate, iHenkeiFlg, iNewestFlg, %1 FROM RIYOUSHA_DOUI_REC"
                             " ORDER BY nIDNo, nDate, iHenkeiFlg"_s.arg(columns));
    }
};

} // namespace

TEST_F(ConsentImports, FollowTheRulesOfEntry) {
    const ImportJob file =
        job(ImportKind::Consents,
            u"利用者番号,利用者名,同意日,加療開始,加療終了,医師,傷病名,施術部位,温罨法,はり,区分,備考\n"
            "7,山﨑花子,R8.5.20,,,,,,,,,\n"
            ",佐藤太郎,R8.6.1,R8.6.1,R8.11.30,森花,腰痛症・しびれ,,,○,,新\n"
            "7,,R8.5.20,,,,,右下肢,,,変形徒手,\n"
            "7,,2025/11/20,,,,脳出血,四肢,○,,,\n"
            "7,鈴木,R8.7.1,,,,,,,,,\n"
            "7,,R8.5.20,,,,,,,,,\n"
            "8,,2026/7/1,,,3,,首,,,,\n"
            "8,,昨日,,,,,,,,,\n"
            ",誰か,R8.7.1,,,,,,,,,\n"_s,
            true);
    const QStringList said = tried(file);
    EXPECT_EQ(said.value(0), u"新規 施術内容・傷病名・医師は前の同意（2025/11/20）と同じにします　"
                             "要加療期間 2026/06/01 ～ 2026/11/30"_s);
    EXPECT_EQ(said.value(1), u"× 医師「森花」が2件あります（番号 4、12）。番号で指定してください"_s);
    EXPECT_TRUE(said.value(2).startsWith(u"新規"_s)) << said.value(2).toStdString();
    EXPECT_TRUE(said.value(3).startsWith(u"変更 傷病名：脳梗塞 → 脳出血　体幹"_s) ||
                said.value(3).startsWith(u"変更 "_s));
    EXPECT_TRUE(said.value(3).contains(u"傷病名：脳梗塞 → 脳出血"_s) &&
                said.value(3).contains(u"左上肢：あり"_s));
    EXPECT_EQ(said.value(4), u"× 番号 7 は「山﨑　花子」です（ファイルでは「鈴木」）"_s);
    EXPECT_EQ(said.value(5), u"× ファイルの中に、同じ利用者の同じ日付の同意があります"_s);
    EXPECT_TRUE(said.value(6).startsWith(u"× 施術部位「首」が分かりません"_s)) << said.value(6).toStdString();
    EXPECT_EQ(said.value(7), u"× 「同意日」が日付ではありません：昨日"_s);
    EXPECT_EQ(said.value(8), u"× 利用者「誰か」は登録されていません"_s);

    database.run(u"UPDATE DOCTOR SET cName = '森　苗' WHERE cIDNo = '12'"_s);
    const ImportOutcome done = written(file, ImportRows::RightOnes);
    ASSERT_EQ(done.kind, ImportOutcome::Done) << done.text.toStdString();
    EXPECT_EQ(
        consents(u"tDouiKaryoS, tDouiKaryoE, cIsiCd, cDouiIsiKikan, cDouiByoumei, iGetFlg, cItiranBikou"_s),
        (QStringList{u"7|20251120|0|0|2025/12/01|2026/05/31|3|NULL|脳出血|1|覚え"_s,
                     u"7|20260520|0|1|2026/06/01|2026/11/30|3|NULL|脳出血|0|NULL"_s,
                     u"7|20260520|1|1|2026/05/20|2026/06/30|3|NULL|脳出血|0|NULL"_s,
                     u"8|20260601|0|1|2026/06/01|2026/11/30|4|甲病院|腰痛症・しびれ|0|新"_s}));
    EXPECT_EQ(
        consents(u"iSejutuBui1, iSejutuBui2, iSejutuBui4, iOnan, tOnanEday, tHenKeEday, iHKSyobyou05Flg,"
                 " cSyoujyouSonotaStr, tHKHariEday, cMasByoumei"_s),
        (QStringList{u"7|20251120|0|0|0|1|1|1|2026/05/31|NULL|0|NULL|NULL|脳出血"_s,
                     u"7|20260520|0|1|0|1|1|1|2026/11/30|NULL|0|NULL|NULL|脳出血"_s,
                     u"7|20260520|1|1|0|0|1|0|NULL|2026/06/30|0|NULL|NULL|脳出血"_s,
                     u"8|20260601|0|1|0|0|0|0|NULL|NULL|1|しびれ|2026/11/30|NULL"_s}));
    EXPECT_EQ(tried(file).mid(0, 4).join(u'/').count(u"同じ"_s), 4);
}

TEST_F(ConsentImports, WaitForNobodysChangesAndOverwriteNone) {
    const ImportJob file = job(ImportKind::Consents, u"利用者番号,同意日,傷病名\n7,2025/11/20,脳出血\n"_s);
    const Result<ImportPlan> shown = tryImport(file, database.db, folders);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cDouiByoumei = '骨折'"_s);
    EXPECT_EQ(writeImport(file, database.db, folders, *shown, ImportRows::All, {}).kind,
              ImportOutcome::Overtaken);
    EXPECT_EQ(database.value(u"SELECT cDouiByoumei FROM RIYOUSHA_DOUI_REC"_s), u"骨折"_s);
}

TEST_F(ConsentImports, TheTemplatesOfAllKindsCanBeReadBackAsTheyAre) {
    const QString path = database.folder() + u"/ひな形.csv"_s;
    database.run(
        u"DELETE FROM RIYOUSHA_DOUI_REC; DELETE FROM RIYOUSHA; DELETE FROM DOCTOR; DELETE FROM STAFF"_s);
    for (const ImportKind kind :
         {ImportKind::Facilities, ImportKind::Doctors, ImportKind::Staff, ImportKind::Counsellors,
          ImportKind::CareManagers, ImportKind::Patients, ImportKind::Consents}) {
        ASSERT_TRUE(writeImportTemplate(path, kind));
        Result<CsvFile> file = CsvFile::open(path);
        ASSERT_TRUE(file);
        ImportJob read{.kind = kind, .file = std::move(*file), .columns = {}, .branch = {1, 1}};
        read.columns = recogniseColumns(read.description(), read.file);
        EXPECT_EQ(std::ranges::count(read.columns.fields, -1), 0) << int(kind);
        const ImportOutcome done = written(read);
        EXPECT_EQ(done.kind, ImportOutcome::Done)
            << int(kind) << done.text.toStdString() << said(done.plan).join(u'/').toStdString();
        EXPECT_EQ(done.plan.count(PlannedRow::New), 2) << int(kind);
    }
}

TEST_F(ConsentImports, ColumnsAreKeptUnderANameForTheNextTime) {
    ImportJob file = job(ImportKind::Patients, u"なまえ,生まれた日,memo\n山田,1950/1/1,x\n"_s);
    file.columns.headed = true;
    file.columns.assign(0, file.description().field(u"cName"));
    file.columns.assign(1, file.description().field(u"tBirthday"));
    const ImportTypes types(folders, ImportKind::Patients);
    ASSERT_TRUE(types.keep(u"介護ソフト"_s, file.columns));
    ASSERT_TRUE(types.keep(u"会計"_s, job(ImportKind::Patients, u"氏名,電話\n1,2"_s).columns));
    EXPECT_EQ(types.names(), (QStringList{u"介護ソフト"_s, u"会計"_s}));
    EXPECT_EQ(ImportTypes(folders, ImportKind::Doctors).names(), QStringList());
    ImportColumns other = file.columns;
    other.fields = {-1, -1, 0};
    EXPECT_FALSE(types.apply(u"会計"_s, other));
    EXPECT_TRUE(types.apply(u"介護ソフト"_s, other));
    EXPECT_EQ(other.fields, file.columns.fields);
}
