#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "app/base/massage_ini.h"
#include "app/base/settings.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class ProgramFolder : public testing::Test {
protected:
    void put(const QString &name, const QString &text) {
        const QString path = at(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(encode932(text).bytes);
    }
    QString at(const QString &name) const { return folder.filePath(name); }

    QTemporaryDir folder;
    QString program = folder.path();
};

TEST_F(ProgramFolder, FoldersFollowMassageIni) {
    const struct {
        QString line;
        QString data; ///< below the program folder, unless a full path
    } cases[] = {
        {u"SYSTEM_DATA=DATA"_s, u"/DATA"_s},
        {u" system_data = 共有\\DATA\\ \r"_s, u"/共有/DATA"_s},
        {u"SYSTEM_DATA=sub/x/"_s, u"/sub/x"_s},
        {u"SYSTEM_DATA=A=B"_s, u"/A=B"_s},
        {u"SYSTEM_DATA=/srv/同意/"_s, u"/srv/同意"_s},
        {u"SYSTEM_DATA=\\srv\\data"_s, u"/srv/data"_s},
        {u"SYSTEM_DATA="_s, u""_s},
        {u"SYSTEM_DATA"_s, u""_s},
        {u"SYSTEM_TMP=x"_s, u""_s},
        {u"SYSTEM_DATA=one\nSYSTEM_DATA=two"_s, u"/one"_s},
    };
    for (const auto &[line, data] : cases) {
        put(u"Massage.ini"_s, line + u"\nKYOTEN_CD=1\n"_s);
        EXPECT_EQ(Folders(program).data(), data.startsWith(u"/srv"_s) ? data : program + data)
            << line.toStdString();
    }
    QFile::remove(at(u"Massage.ini"_s));
    const Folders none(program + u'/');
    for (const QString &path : {none.system(), none.temporary(), none.icons(), none.data()})
        EXPECT_EQ(path, program);
}

TEST_F(ProgramFolder, LooksFilesUpWithoutCase) {
    put(u"Data/Sub/Ａbc.INI"_s, {});
    put(u"x.ini"_s, {});
    put(u"X.ini"_s, {});
    put(u"MASSAGE.INI"_s, u"SYSTEM_DATA=data\\SUB"_s);
    // Where the system itself finds names without case, they stay as they were given.
    const auto same = [](const QString &a, const QString &b) { return QFileInfo(a) == QFileInfo(b); };
    EXPECT_PRED2(same, Folders::file(program, u"dATA\\sub\\ａBC.ini"_s), at(u"Data/Sub/Ａbc.INI"_s));
    EXPECT_PRED2(same, Folders::file(program, u"\\DATA\\new.ini"_s), at(u"Data/new.ini"_s));
    EXPECT_EQ(Folders::file(program, u"x.ini"_s), at(u"x.ini"_s));
    EXPECT_EQ(Folders::file(program, u"X.ini"_s), at(u"X.ini"_s));
    EXPECT_EQ(Folders::file(program, u"none/y.ini"_s), at(u"none/y.ini"_s));
    EXPECT_PRED2(same, Folders(program).data(), at(u"Data/Sub"_s));
}

TEST_F(ProgramFolder, MassageIniWarnsWhenAsked) {
    RecordedMessages messages;
    EXPECT_EQ(readMassageIni(program, u"SYSTEM_SYS"_s, u"d"_s), u"d"_s);
    EXPECT_EQ(readMassageIni(program, u"SYSTEM_SYS"_s, u"d"_s, &messages), u"d"_s);
    put(u"Massage.ini"_s, u"[x]\r\n;\r\n\tSYSTEM_TMP =\t 表\\\"一時\"  \0;\r\n"_s);
    EXPECT_EQ(readMassageIni(program, u"SYSTEM_SYS"_s, u"d"_s, &messages), u"d"_s);
    EXPECT_EQ(readMassageIni(program, u"SYSTEM_TMP"_s, u"d"_s, &messages), u"表\\\"一時\""_s);

    ASSERT_EQ(messages.shown.size(), 2);
    EXPECT_EQ(messages.shown[0].text, u"システム設定ファイルが見つかりません。"_s);
    EXPECT_EQ(messages.shown[1].text,
              u"システム設定ファイルに、指定の項目が見つかりません。\r[SYSTEM_SYS]"_s);
    for (const Message &message : messages.shown) {
        EXPECT_EQ(message.title, u"警告！"_s);
        EXPECT_EQ(message.icon, MessageIcon::Critical);
    }
}

TEST_F(ProgramFolder, SettingsLiveInTheDataFolder) {
    put(u"Massage.ini"_s, u"SYSTEM_DATA=DATA\r\n"_s);
    QDir(program).mkdir(u"DATA"_s);
    const Folders folders(program);
    Settings settings(folders);
    EXPECT_TRUE(settings.readable(Setting::祝日考慮)) << "not made yet";
    EXPECT_FALSE(settings.isOn(Setting::祝日考慮));
    EXPECT_EQ(settings.iSwitch(Setting::祝日考慮, true), 0);
    EXPECT_EQ(settings.iWrite(Setting::同意書自動計算デフォルト, u"1,2,1"_s), 0);
    EXPECT_EQ(settings.iWrite(Setting::利用者並び順, 1), 0);
    EXPECT_TRUE(settings.isOn(Setting::祝日考慮));
    EXPECT_EQ(settings.text(Setting::同意書自動計算デフォルト), u"1,2,1"_s);
    QFile file(at(u"DATA/患者管理設定.ini"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(decode932(file.readAll()), u"[同意記録]\r\n祝日考慮=1\r\n同意書自動計算デフォルト=1,2,1\r\n"
                                         u"[同意書管理]\r\n利用者並び順=1\r\n"_s);
    file.close(); // or Windows would keep it

    put(u"DATA/患者管理設定.ini"_s, u"[同意記録]\n変形連動=-1\n祝日考慮=はい\n前回取得日連動=\n"_s);
    EXPECT_TRUE(settings.isOn(Setting::変形連動));
    EXPECT_FALSE(settings.isOn(Setting::祝日考慮));
    EXPECT_FALSE(settings.isOn(Setting::前回取得日連動));

    QFile::remove(at(u"DATA/患者管理設定.ini"_s));
    QDir(at(u"DATA"_s)).mkdir(u"患者管理設定.ini"_s);
    EXPECT_TRUE(settings.readable(Setting::祝日考慮)
                    .reason()
                    .contains(QDir::toNativeSeparators(at(u"DATA/患者管理設定.ini"_s))));
    EXPECT_TRUE(QDir(at(u"DATA"_s)).removeRecursively());
    EXPECT_FALSE(settings.readable(Setting::祝日考慮)) << "the share is gone";
    EXPECT_EQ(settings.iSwitch(Setting::変形連動, true), -1);
    EXPECT_TRUE(settings.sErrMsg().contains(u"患者管理設定.ini"_s)) << settings.sErrMsg().toStdString();
}

} // namespace
