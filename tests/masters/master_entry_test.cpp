#include "masters/master_entry.h"

#include "app/base/codepage932.h"
#include "masters/postal_codes.h"
#include "tests/masters/practice.h"
#include "tests/support/failing_provider.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class MasterEntries : public MasterPractice {
protected:
    MasterEntries() {
        colleague.iInit(database.connectionString());
        EXPECT_EQ(colleague.iConnect(), 0);
    }

    MasterEntry opened(const MasterDescription &master, cT_ADODB &db, const QString &code) const {
        MasterEntry entry(master, db);
        EXPECT_TRUE(entry.open(code));
        return entry;
    }
    QStringList patients(const QString &columns) const {
        return database.rows(u"SELECT iKyotenEb, nIDNo, %1 FROM RIYOUSHA ORDER BY 1, 2"_s.arg(columns));
    }

    cT_ADODB colleague;
    const MasterDescription doctors = describeMaster(MasterKind::Doctor);
    const MasterDescription facilities = describeMaster(MasterKind::Facility);
};

const QString overtaken = u"他のＰＣからデータが更新されてますので保存できません｡ "_s;

} // namespace

TEST_F(MasterEntries, TwoPeopleWhoEditOneDoctorLoseNothing) {
    MasterEntry mine = opened(doctors, database.db, u"12"_s);
    MasterEntry theirs = opened(doctors, colleague, u"12"_s);
    theirs.setValue(u"cTelNo"_s, u"090-2"_s);
    ASSERT_EQ(theirs.save(false).kind, MasterOutcome::Done);
    mine.setValue(u"cFaxNo"_s, u"0999-9"_s);
    const MasterOutcome refused = mine.save(false);
    EXPECT_EQ(refused.kind, MasterOutcome::Refused);
    EXPECT_EQ(refused.text, overtaken);
    EXPECT_EQ(doctor(u"cTelNo"_s), u"090-2"_s);
    EXPECT_EQ(doctor(u"cFaxNo"_s), u"NULL"_s);

    // Reading again takes in what was not changed here, and nothing else.
    ASSERT_TRUE(mine.reread());
    EXPECT_EQ(mine.save(false).kind, MasterOutcome::Done);
    EXPECT_EQ(doctor(u"cTelNo || cFaxNo"_s), u"090-20999-9"_s);
    ASSERT_TRUE(mine.open(u"12"_s));
    mine.setValue(u"cTelNo"_s, u"090-3"_s);
    database.run(u"UPDATE DOCTOR SET cTelNo = '090-4' WHERE cIDNo = '12'"_s);
    ASSERT_TRUE(mine.reread());
    EXPECT_EQ(mine.save(false).text, overtaken);

    // Two writes of one moment, and a doctor who is gone.
    MasterEntry again = opened(doctors, database.db, u"12"_s);
    again.setValue(u"cFaxNo"_s, u"0999-9"_s);
    database.run(u"UPDATE DOCTOR SET cMail1 = 'a@b' WHERE cIDNo = '12'"_s);
    EXPECT_EQ(again.save(false).text, overtaken);
    database.run(u"DELETE FROM DOCTOR WHERE cIDNo = '12'"_s);
    EXPECT_EQ(again.save(false).kind, MasterOutcome::Refused);
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM DOCTOR"_s), u"2"_s);
}

TEST_F(MasterEntries, TwoNewRowsOfOneMomentGetTwoNumbersAndATypedOneIsKept) {
    const Branch branch{1, 1};
    for (const MasterKind kind : {MasterKind::Doctor, MasterKind::Facility, MasterKind::Patient,
                                  MasterKind::Counsellor, MasterKind::Staff}) {
        const MasterDescription master = describeMaster(kind, branch);
        SCOPED_TRACE(qPrintable(master.noun));
        MasterEntry mine(master, database.db), theirs(master, colleague), typed(master, colleague);
        ASSERT_TRUE(mine.openNew() && theirs.openNew() && typed.openNew());
        const qint64 first = mine.code().toLongLong();
        for (MasterEntry *entry : {&mine, &theirs, &typed})
            entry->setValue(master.nameColumn, u"先"_s);
        EXPECT_EQ(mine.save(false).kind, MasterOutcome::Done);
        EXPECT_EQ(theirs.save(false).kind, MasterOutcome::Done);
        EXPECT_EQ(mine.code().toLongLong(), first);
        EXPECT_EQ(theirs.code().toLongLong(), first + 1);
        typed.setValue(master.codeColumn, theirs.code());
        EXPECT_EQ(typed.save(false).text, u"同じIDのデータが存在します。 "_s);
    }
}

TEST_F(MasterEntries, ADoctorsNameGoesToThePatientsWhoNameHimAndToNobodyElse) {
    MasterEntry entry = opened(doctors, database.db, u"12"_s);
    entry.setValue(u"cTelNo"_s, u"090-2"_s);
    EXPECT_FALSE(entry.changesRepeated());
    entry.setValue(u"cName"_s, u"O'Neill"_s);
    EXPECT_TRUE(entry.changesRepeated());
    ASSERT_EQ(entry.save(true).kind, MasterOutcome::Done);
    EXPECT_EQ(patients(u"cDouiIsiName1, cDouiIsiName2"_s),
              (QStringList{u"1|1|O'Neill|NULL"_s, u"1|2|三浦 一|O'Neill"_s, u"1|4|三浦 一|NULL"_s,
                           u"2|1|O'Neill|NULL"_s}));
}

// The institution's old address at its doctor is mended, the address that a doctor has of his own is not.
TEST_F(MasterEntries, AnInstitutionsChangeReachesDoctorsThatRepeatIt) {
    MasterEntry entry = opened(facilities, database.db, u"5"_s);
    entry.setValue(u"cShamei1"_s, u"新甲病院"_s);
    entry.setValue(u"cAddress1"_s, u"緑川県若葉市桜台2"_s);
    entry.setValue(u"cYubinNo"_s, u"992-1110"_s);
    ASSERT_EQ(entry.save(true).kind, MasterOutcome::Done);
    EXPECT_EQ(database.rows(u"SELECT cKikan, cAddress1, cYubinNo, cTelNo FROM DOCTOR WHERE iSisetsuCode = 5 "
                            "ORDER BY cIDNo"_s),
              (QStringList{u"新甲病院|自宅|NULL|090-1"_s, u"新甲病院|緑川県若葉市桜台2|992-1110|0999-1"_s}));
    EXPECT_EQ(patients(u"cDouiIsiKikan1, cDouiIsiKikan2"_s).value(1), u"1|2|新甲病院|新甲病院"_s);
    EXPECT_EQ(database.value(u"SELECT nLat FROM SISETSU WHERE nIDNo = 5"_s), u"35.123456789"_s);

    database.run(u"UPDATE DOCTOR SET cKikan = '新甲病院 内科' WHERE cIDNo = '12'"_s);
    database.run(u"UPDATE RIYOUSHA SET cDouiIsiKikan1 = '新甲病院 内科' WHERE nDouiIsiCd = 12"_s);
    ASSERT_TRUE(entry.open(u"5"_s));
    entry.setValue(u"cTelNo"_s, u"0999-8"_s);
    ASSERT_EQ(entry.save(true).kind, MasterOutcome::Done);
    EXPECT_EQ(database.value(u"SELECT DISTINCT cDouiIsiKikan1 FROM RIYOUSHA WHERE nDouiIsiCd = 12"_s),
              u"新甲病院 内科"_s);
}

// Whatever statement fails, doctor and patients stay as they were.
TEST_F(MasterEntries, AFailedSaveLeavesAllUnchanged) {
    const QStringList before = patients(u"cDouiIsiName1, cDouiIsiName2"_s);
    bool done = false;
    int failures = 0;
    for (int nth = 2; !done && nth < 40; ++nth) {
        FailingConnection failing(database.connectionString(), nth);
        MasterEntry entry(doctors, failing.db);
        if (!entry.open(u"12"_s))
            continue;
        entry.setValue(u"cName"_s, u"新"_s);
        const MasterOutcome outcome = entry.save(true);
        done = outcome.kind == MasterOutcome::Done;
        if (done)
            break;
        ++failures;
        EXPECT_TRUE(outcome.text.contains(FailingConnection::description)) << nth;
        EXPECT_EQ(doctor(u"cName"_s), u"医師'甲"_s) << nth;
        EXPECT_EQ(patients(u"cDouiIsiName1, cDouiIsiName2"_s), before) << nth;
    }
    EXPECT_TRUE(done);
    EXPECT_GE(failures, 6);
}

// As a server does whose columns hold the Japanese code page.
TEST_F(MasterEntries, ATextThatTheDatabaseCannotHoldIsNotSaved) {
    database.run(
        u"CREATE TRIGGER narrow AFTER UPDATE ON DOCTOR WHEN instr(NEW.cName, '𠮷') > 0 BEGIN UPDATE DOCTOR "
        "SET cName = replace(NEW.cName, '𠮷', '?') WHERE cIDNo = NEW.cIDNo; END"_s);
    MasterEntry entry = opened(doctors, database.db, u"3"_s);
    entry.setValue(u"cName"_s, u"𠮷田"_s);
    ASSERT_EQ(entry.lostTexts().size(), 1u);
    EXPECT_EQ(entry.lostTexts()[0].whose + entry.lostTexts()[0].text, u"医師名𠮷田"_s);
    const MasterOutcome outcome = entry.save(false);
    EXPECT_EQ(outcome.kind, MasterOutcome::Refused);
    EXPECT_TRUE(outcome.text.contains(u"医師名「𠮷田」"_s)) << outcome.text.toStdString();
    EXPECT_EQ(doctor(u"cName"_s, 3), u"三浦 一"_s);
}

TEST_F(MasterEntries, InputsAreCheckedInTheirOrder) {
    MasterEntry entry = opened(doctors, database.db, u"12"_s);
    const auto why = [&](const QString &column, const QString &text) {
        entry.setValue(column, text);
        return entry.whyWrong().text;
    };
    EXPECT_EQ(why(u"cKikan"_s, QString(40, u'国')), QString());
    EXPECT_TRUE(why(u"cKikan"_s, QString(40, u'国') + u'a').contains(u"全角 40 文字"_s));
    EXPECT_EQ(why(u"cName"_s, u"　"_s), u"医師名を入力してください。"_s);
    EXPECT_EQ(why(u"cIDNo"_s, {}), u"IDNo.を入力してください。"_s);
    // What old data hold and nobody touched stops no save.
    database.run(
        u"UPDATE DOCTOR SET cCode = '%1', cYubinNo = '変' WHERE cIDNo = '3'"_s.arg(QString(20, u'国')));
    MasterEntry old = opened(doctors, database.db, u"3"_s);
    old.setValue(u"cTelNo"_s, u"1"_s);
    EXPECT_EQ(old.whyWrong().text, QString());
    old.setValue(u"cYubinNo"_s, u"992-10"_s);
    EXPECT_EQ(old.whyWrong().text, u"郵便番号は7桁の数字で入力してください。"_s);
}

TEST_F(MasterEntries, ADeletionSaysWhoNamesTheRowAndHoldsOnlyForThat) {
    MasterEntry entry = opened(doctors, database.db, u"12"_s);
    const Result<MasterUses> uses = entry.uses();
    ASSERT_TRUE(uses);
    EXPECT_EQ(usesText(*uses), u"同意記録 3 件、利用者 3 名"_s);
    EXPECT_EQ(usesText(*opened(facilities, database.db, u"5"_s).uses()), u"医師 2 名"_s);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cIsiCd = '12'"_s);
    EXPECT_EQ(entry.remove(*uses).kind, MasterOutcome::Refused);
    const Result<MasterUses> more = entry.uses();
    ASSERT_EQ(entry.remove(*more).kind, MasterOutcome::Done);
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM DOCTOR"_s), u"2"_s);
}

namespace {

QString line(const QString &code, const QString &town, const QString &kana = u"ﾄｳｷｮｳ"_s) {
    return u"01,\"060  \",\"%1\",\"ｹﾝ\",\"ｼ\",\"%3\",\"北県\",\"西市\",\"%2\",0,0,0,0,0,0\r\n"_s.arg(
        code, town, kana);
}

QStringList texts(const std::vector<PostalPlace> &places) {
    QStringList all;
    for (const PostalPlace &place : places)
        all += place.code + u' ' + place.town + (place.note.isEmpty() ? QString() : u'/' + place.note);
    return all;
}

} // namespace

TEST(PostalCodes, TownsAreReadAsTheyAreMeant) {
    const PostalCodes codes =
        parsePostalCodes(line(u"9990002"_s, u"東（１～３"_s) + line(u"9990002"_s, u"、４丁目）"_s) +
                         line(u"9990001"_s, u"以下に掲載がない場合"_s) +
                         line(u"9990003"_s, u"西市の次に番地がくる場合"_s) + line(u"9990004"_s, u"一円"_s) +
                         line(u"9990005"_s, u"島一円"_s) + line(u"9990006"_s, u"南,本町"_s) + u"\r\n\x1a"_s);
    EXPECT_EQ(codes.skipped, 0);
    EXPECT_EQ(texts(codes.places), (QStringList{u"9990001 "_s, u"9990002 東/１～３、４丁目"_s, u"9990003 "_s,
                                                u"9990004 一円"_s, u"9990005 "_s, u"9990006 南,本町"_s}));
}

TEST(PostalCodes, DamagedLinesAreCountedAndTheOthersRead) {
    const PostalCodes codes = parsePostalCodes(
        u"PK\x03\x04,junk\n"_s + line(u"９９９"_s, u"東"_s) + line(u"9990001"_s, u"\uFFFD"_s) +
        u"01,\"060\",\"9990002\",\"ｹﾝ\n"_s + line(u"9990003"_s, u"南"_s).chopped(10));
    EXPECT_EQ(codes.skipped, 4);
    EXPECT_EQ(texts(codes.places), QStringList{u"9990003 南"_s});
}

TEST(PostalCodes, AnAddressFindsItsClosestPlace) {
    const PostalCodes codes =
        parsePostalCodes(line(u"9990001"_s, u"以下に掲載がない場合"_s) + line(u"9990002"_s, u"本"_s) +
                         line(u"9990003"_s, u"本町"_s) + line(u"9991003"_s, u"本町（２丁目）"_s));
    const QStringList both{u"9990003 本町"_s, u"9991003 本町/２丁目"_s};
    EXPECT_EQ(texts(codes.ofAddress(u"北県西市 本町２－３"_s)), both);
    EXPECT_EQ(texts(codes.ofAddress(u"西市本町"_s)), both);
    EXPECT_EQ(texts(codes.ofAddress(u"北県西市沖"_s)), QStringList{u"9990001 "_s});
    EXPECT_EQ(texts(codes.ofAddress(u"本町"_s)), both);
    EXPECT_EQ(texts(codes.ofAddress(u"東県西市本町"_s)), QStringList());
    EXPECT_EQ(texts(codes.withCode(u"9991"_s)), QStringList{u"9991003 本町/２丁目"_s});
}

TEST_F(MasterEntries, ThePracticesOwnPostalFileIsRead) {
    PostalBook book(folders);
    EXPECT_TRUE(book.codes().reason().contains(u"郵便番号"_s));
    const QString text = line(u"9990001"_s, u"東"_s);
    writePostalCodes("\xEF\xBB\xBF" + text.toUtf8(), u"UTF_KEN_ALL.csv"_s);
    ASSERT_TRUE(book.codes());
    EXPECT_EQ(texts((*book.codes())->places), QStringList{u"9990001 東"_s});
    EXPECT_EQ(book.takeOddity(), QString());
    QFile::remove(folders.data() + u"/郵便番号/UTF_KEN_ALL.csv"_s);
    writePostalCodes(encode932(text + line(u"9990002"_s, u"西"_s)).bytes + "broken");
    ASSERT_TRUE(book.codes());
    EXPECT_EQ((*book.codes())->places.size(), 2u);
    EXPECT_TRUE(book.takeOddity().contains(u"1 行"_s));
    EXPECT_EQ(book.takeOddity(), QString());
}
