#include "app/base/codepage932.h"
#include "app/base/ini_file.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class IniFile : public testing::Test {
protected:
    void put(const QByteArray &bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray bytes() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "(none)"_ba;
    }
    QStringList entries() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir folder;
    QString path = folder.filePath(u"設定.ini"_s);
    clsOplIniFile ini;
};

TEST_F(IniFile, SaysWhyItCannotBeBound) {
    EXPECT_EQ(ini.iInit({}), -1);
    EXPECT_EQ(ini.sErrMsg(), u"Iniファイル名を指定してください。"_s);
    EXPECT_EQ(ini.iInit(path), -1);
    EXPECT_EQ(ini.sErrMsg(),
              u"指定されたIni（"_s + QDir::toNativeSeparators(path) + u"）ファイルが見つかりません。"_s);
    EXPECT_EQ(ini.iInit(folder.path()), -1); // a folder is no file
    put({});
    EXPECT_EQ(ini.iInit(path), 0);
    EXPECT_EQ(ini.sErrMsg(), u""_s);
}

TEST_F(IniFile, CutsValuesToTheBuffer) {
    const QByteArray ascii(254, 'a');
    put("[s]\nfits=" + ascii + "b\nlong=" + ascii + "bc\nsplit=" + ascii + encode932(u"髙"_s).bytes +
        "\nnul=a " + QByteArray(1, '\0') + "b\nquoted=\" a  \"\n");
    ini.iInit(path);
    const QString text = QString::fromLatin1(ascii);
    EXPECT_EQ(ini.csGetProfileString(u"s"_s, u"fits"_s), text + u'b');
    EXPECT_EQ(ini.csGetProfileString(u"s"_s, u"long"_s), text + u'b');
    EXPECT_EQ(ini.csGetProfileString(u"s"_s, u"split"_s), text);
    EXPECT_EQ(ini.csGetProfileString(u"s"_s, u"nul"_s), u"a"_s);
    EXPECT_EQ(ini.csGetProfileString(u"s"_s, u"quoted"_s), u" a"_s);
}

TEST_F(IniFile, GivesTheFallbackForWhatIsMissing) {
    put("[s]\nempty=\nword=x\nnumber=\"12\"\n");
    ini.iInit(path);
    EXPECT_EQ(ini.csGetProfileString(u"s"_s, u"none"_s, u"d"_s), u"d"_s);
    EXPECT_EQ(ini.csGetProfileString(u"t"_s, u"word"_s, u"d"_s), u"d"_s);
    EXPECT_EQ(ini.csGetProfileString(u"s"_s, u"empty"_s, u"d"_s), u""_s);
    EXPECT_EQ(ini.nGetProfileLong(u"s"_s, u"none"_s), 0);
    EXPECT_EQ(ini.nGetProfileLong(u"s"_s, u"none"_s, 7), 7);
    EXPECT_EQ(ini.nGetProfileLong(u"s"_s, u"empty"_s, 7), 7);
    EXPECT_EQ(ini.nGetProfileLong(u"s"_s, u"word"_s, 7), 0);
    EXPECT_EQ(ini.nGetProfileLong(u"s"_s, u"number"_s), 12);
    QFile::remove(path);
    EXPECT_EQ(ini.csGetProfileString(u"s"_s, u"word"_s, u"d"_s), u"d"_s);
}

TEST_F(IniFile, WritesAndRemoves) {
    EXPECT_EQ(ini.iInit(path), -1);
    EXPECT_EQ(ini.iRemove(u"s"_s), 0);
    EXPECT_EQ(bytes(), "(none)"); // nothing to remove makes no file
    EXPECT_EQ(ini.iWriteProfileString(u"s"_s, u"k"_s, u"１"_s), 0);
    EXPECT_EQ(ini.iWriteProfileString(u"s"_s, u"m"_s, u"〜"_s), 0);
    EXPECT_TRUE(ini.touched());
    EXPECT_EQ(bytes(), "[s]\r\nk=\x82\x50\r\nm=\x81\x60\r\n");
    EXPECT_EQ(ini.iRemove(u"s"_s, u"m"_s), 0);
    EXPECT_EQ(bytes(), "[s]\r\nk=\x82\x50\r\n");
    EXPECT_EQ(ini.iRemove(u"s"_s), 0);
    EXPECT_EQ(bytes(), "");
}

TEST_F(IniFile, RefusesWhatWouldBeReadBackOtherwise) {
    put("[s]\r\nk=1\r\n");
    ini.iInit(path);
    const struct {
        QString section, key, value;
    } cases[] = {
        {u""_s, u"k"_s, u"v"_s},     {u" "_s, u"k"_s, u"v"_s},    {u"s]t"_s, u"k"_s, u"v"_s},
        {u"s\nt"_s, u"k"_s, u"v"_s}, {u"s"_s, u""_s, u"v"_s},     {u"s"_s, u"a=b"_s, u"v"_s},
        {u"s"_s, u" ;k"_s, u"v"_s},  {u"s"_s, u"[k"_s, u"v"_s},   {u"s"_s, u"k"_s, u"v\r\n[x]"_s},
        {u"s"_s, u"k"_s, u"v\n"_s},  {u"s"_s, u"k\r"_s, u"v"_s},  {u"s"_s, u"\tk"_s, u"v"_s},
        {u"s\t"_s, u"k"_s, u"v"_s},  {u"s"_s, u"k"_s, u"a\0b"_s},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(ini.iWriteProfileString(c.section, c.key, c.value), -1) << c.key.toStdString();
        EXPECT_TRUE(ini.sErrMsg().contains(QDir::toNativeSeparators(path)));
    }
    EXPECT_EQ(bytes(), "[s]\r\nk=1\r\n");
}

TEST_F(IniFile, AFailedWriteSaysWhereAndLeavesNothingBehind) {
    put("[s]\r\nk=1\r\n");
    const auto failsAt = [this](const QString &where, const QString &why) {
        ini.iInit(where);
        EXPECT_EQ(ini.iWriteProfileString(u"s"_s, u"k"_s, u"2"_s), -1) << where.toStdString();
        EXPECT_TRUE(ini.sErrMsg().contains(QDir::toNativeSeparators(where)) && ini.sErrMsg().contains(why))
            << ini.sErrMsg().toStdString();
    };
    failsAt(folder.filePath(u"無い/x.ini"_s), u"フォルダがありません。"_s);
    failsAt(folder.path(), u"同じ名前のフォルダがあります。"_s);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup);
    failsAt(path, u"読み取り専用のファイルです。"_s);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    if (!onWindows()) { // which has no such folders
        QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner);
        failsAt(path, u"読み取り専用のフォルダです。"_s);
        failsAt(folder.filePath(u"new.ini"_s), u"読み取り専用のフォルダです。"_s);
        QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    EXPECT_EQ(ini.iInit({}), -1);
    EXPECT_EQ(ini.iWriteProfileString(u"s"_s, u"k"_s, u"2"_s), -1);
    EXPECT_EQ(bytes(), "[s]\r\nk=1\r\n");
    EXPECT_EQ(entries(), QStringList{u"設定.ini"_s});
}

} // namespace
