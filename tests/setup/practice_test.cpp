#include "app/base/massage_ini.h"
#include "setup/installation_files.h"
#include "setup/practice.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <array>
#include <gtest/gtest.h>
#include <thread>

using namespace Qt::Literals::StringLiterals;
using setup::Existing;
using setup::Treatments;

namespace {

const QDate today(2026, 11, 21);

setup::Practice newPractice(const QString &name) {
    setup::Practice practice;
    practice.name = name;
    practice.address = u"緑川県若葉市1-2"_s;
    practice.staffName = u"髙橋　誠"_s;
    return practice;
}

/// What a practice's tables hold, in numbers.
QString contents(const TestDatabase &database) {
    return database.value(
        u"SELECT (SELECT count(*) FROM KYOTEN) || ' ' || (SELECT count(*) FROM CORP) || ' ' || "
        "(SELECT count(*) FROM CORP_SUB) || ' ' || (SELECT count(*) FROM CODE) || ' ' || "
        "(SELECT count(*) FROM SHINSEISYO) || ' ' || (SELECT count(*) FROM HOLIDAY) || ' ' || "
        "(SELECT count(*) FROM STAFF)"_s);
}

} // namespace

TEST(NewPractice, HasWhatTheConsentWorkReadsAndItsLayoutsLieInTheInstallation) {
    const TestDatabase database;
    QTemporaryDir folder;
    cT_ADODB db;
    db.iInit(database.connectionString());
    const Result<bool> written = setup::writePractice(db, newPractice(u"あおば治療院"_s), today);
    ASSERT_TRUE(written && *written) << written.reason().toStdString();
    EXPECT_EQ(database.rows(u"SELECT iKyotenEb, cKyotenName, iUsedFlg FROM KYOTEN ORDER BY iKyotenEb"_s),
              (QStringList{u"0|あおば治療院|1"_s, u"1|あおば治療院|1"_s}));
    EXPECT_EQ(database.value(u"SELECT cShamei1 || cAddress1 FROM CORP"_s), u"あおば治療院緑川県若葉市1-2"_s);
    EXPECT_EQ(database.value(u"SELECT iKyotenCd || cName FROM STAFF"_s), u"1髙橋　誠"_s);
    EXPECT_EQ(database.value(u"SELECT min(iYear) || max(iYear) FROM HOLIDAY"_s), u"20242036"_s);
    EXPECT_EQ(database.value(u"SELECT cName FROM HOLIDAY WHERE iYear = 2026 AND iMonth = 5 AND iDay = 6"_s),
              u"振替休日"_s);
    EXPECT_EQ(database.value(u"SELECT count(*) FROM SHINSEISYO WHERE iSejutsuKubun <> 0 OR iDelFlg <> 0"_s),
              u"0"_s);

    const auto files = [&] {
        return setup::writeInstallationFiles(folder.path(), setup::settingsFiles({}, {}), Existing::Keep);
    };
    ASSERT_TRUE(files());
    for (const QString &layout : database.rows(u"SELECT DISTINCT cFileName FROM SHINSEISYO"_s))
        EXPECT_TRUE(QFile::exists(folder.filePath(u"SYS/"_s + layout))) << layout.toStdString();
    EXPECT_EQ(MassageIni(folder.path()).value(u"SYSTEM_SYS"), u"SYS"_s);
    // What an office changed since is its own.
    QFile settings(folder.filePath(u"DATA/mail.ini"_s));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.close();
    ASSERT_TRUE(files());
    EXPECT_EQ(settings.size(), 0);
}

TEST(NewPractice, HasTheFormsOfItsTreatments) {
    const auto forms = [](Treatments treatments) {
        const TestDatabase database;
        cT_ADODB db;
        db.iInit(database.connectionString());
        setup::Practice practice = newPractice(u"あ"_s);
        practice.treatments = treatments;
        EXPECT_TRUE(setup::writePractice(db, practice, today));
        return database.rows(u"SELECT DISTINCT nIDNo FROM SHINSEISYO ORDER BY nIDNo"_s).join(u' ');
    };
    EXPECT_EQ(forms(Treatments::Massage), u"1 2 5 11 12 13 14 15"_s);
    EXPECT_EQ(forms(Treatments::Acupuncture), u"3 4 6 16"_s);
    EXPECT_EQ(forms(Treatments::Both), u"1 2 3 4 5 6 11 12 13 14 15 16"_s);
}

TEST(NewPractice, IsWrittenByOneOfSeveralPcsAndNeverOverAnother) {
    const TestDatabase database;
    std::array<int, 4> wrote{};
    {
        std::vector<std::jthread> pcs;
        for (int &one : wrote)
            pcs.emplace_back([&] {
                cT_ADODB db;
                db.iInit(database.connectionString());
                const Result<bool> written = setup::writePractice(db, newPractice(u"あ"_s), today);
                one = written ? int(*written) : -1;
            });
    }
    std::ranges::sort(wrote);
    EXPECT_EQ(wrote, (std::array{0, 0, 0, 1}));
    const QString before = contents(database);
    cT_ADODB db;
    db.iInit(database.connectionString());
    EXPECT_FALSE(*setup::writePractice(db, newPractice(u"べつ"_s), today));
    EXPECT_EQ(contents(database), before);
}

TEST(NewPractice, IsWrittenWholeOrNotAtAll) {
    const TestDatabase database;
    database.run(u"ALTER TABLE STAFF RENAME COLUMN cNameKana TO cYomi"_s); // the last that is written
    cT_ADODB db;
    db.iInit(database.connectionString());
    const Result<bool> refused = setup::writePractice(db, newPractice(u"あ"_s), today);
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.reason().contains(u"何も登録していません。"_s) &&
                refused.reason().contains(u"cNameKana"_s))
        << refused.reason().toStdString();
    EXPECT_EQ(contents(database), u"0 0 0 0 0 0 0"_s);
    database.run(u"ALTER TABLE STAFF RENAME COLUMN cYomi TO cNameKana"_s);
    EXPECT_TRUE(*setup::writePractice(db, newPractice(u"あ"_s), today)) << "what was half-made is finished";
}

TEST(NewPractice, TextsThatDoNotFitAreRefused) {
    setup::Practice practice = newPractice(u"　"_s);
    EXPECT_EQ(setup::whyNotStored(practice), u"事業所名を入力してください。"_s);
    practice.name = QString(30, u'あ');
    EXPECT_EQ(setup::whyNotStored(practice), QString());
    practice.name += u'あ';
    EXPECT_EQ(setup::whyNotStored(practice),
              u"事業所名が長すぎます。半角60文字（全角30文字）までにしてください。"_s);
}
