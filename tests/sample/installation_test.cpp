#include "app/base/ini_file.h"
#include "app/base/massage_ini.h"
#include "db/adodb.h"
#include "sample/installation.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using sample::SampleOutcome;

namespace {

QByteArray bytesOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void write(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
}

class Installation : public testing::Test {
protected:
    Installation() {
        m_options.folder = m_temporary.filePath(u"見本"_s);
        m_options.day = QDate(2026, 11, 21);
        m_options.patients = 20;
    }

    SampleOutcome make() {
        const sample::SampleResult result = sample::makeInstallation(m_options);
        EXPECT_TRUE(result.sentence.contains(m_options.folder)) << result.sentence.toStdString();
        return result.outcome;
    }
    QString at(const QString &name) const { return QDir(m_options.folder).filePath(name); }
    QString setting(const QString &file, const QString &section, const QString &key) const {
        clsOplIniFile ini;
        EXPECT_EQ(ini.iInit(at(file)), 0) << ini.sErrMsg().toStdString();
        return ini.csGetProfileString(section, key);
    }

    QTemporaryDir m_temporary;
    sample::SampleOptions m_options;
};

TEST_F(Installation, IsOneThatTheProgramReads) {
    ASSERT_EQ(make(), SampleOutcome::Made);
    cT_ADODB db;
    db.iInit(setting(u"adodb.ini"_s, u"接続情報"_s, u"接続情報"_s));
    ASSERT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();
    Recordset rows;
    ASSERT_EQ(db.iOpenRecSet(rows, u"SELECT nIDNo FROM RIYOUSHA"_s), 0);
    EXPECT_EQ(rows.rowCount(), 20);
    Recordset forms;
    ASSERT_EQ(db.iOpenRecSet(forms, u"SELECT DISTINCT cFileName FROM SHINSEISYO"_s), 0);
    EXPECT_GE(forms.rowCount(), 12);
    for (int row = 0; row < forms.rowCount(); ++row)
        EXPECT_TRUE(QFileInfo::exists(at(u"SYS/"_s + forms.text(row, 0))))
            << forms.text(row, 0).toStdString();

    EXPECT_EQ(readMassageIni(m_options.folder, u"SYSTEM_DATA"_s, {}), u"DATA"_s);
    EXPECT_EQ(readMassageIni(m_options.folder, u"KYOTEN_CD"_s, {}), u"1"_s);
    EXPECT_EQ(setting(u"DATA/患者管理設定.ini"_s, u"同意記録"_s, u"同意書自動計算デフォルト"_s), u"1,1,1"_s);
    EXPECT_EQ(setting(u"DATA/同意依頼方法list.ini"_s, u"依頼方法リスト"_s, u"NUM"_s), u"5"_s);
    EXPECT_EQ(setting(u"DATA/同意依頼方法list.ini"_s, u"依頼方法リスト"_s, u"LIST005"_s), u"電話"_s);
    EXPECT_NE(setting(u"Version.ini"_s, u"Version"_s, u"Version"_s), QString());
    for (const QString &folder : {u"SYS"_s, u"TMP"_s, u"ICON"_s, u"DATA"_s})
        EXPECT_TRUE(QFileInfo(at(folder)).isDir()) << folder.toStdString();
}

TEST_F(Installation, HasFilesOfTheCodePage) {
    ASSERT_EQ(make(), SampleOutcome::Made);
    for (const QString &folder : {m_options.folder, at(u"DATA"_s)})
        for (const QFileInfo &file : QDir(folder).entryInfoList({u"*.ini"_s, u"*.txt"_s}, QDir::Files)) {
            const QByteArray bytes = bytesOf(file.filePath());
            EXPECT_EQ(bytes.count('\n'), bytes.count("\r\n")) << file.fileName().toStdString();
            EXPECT_TRUE(bytes.endsWith("\r\n")) << file.fileName().toStdString();
        }
    // 接続情報 in code page 932
    EXPECT_TRUE(bytesOf(at(u"adodb.ini"_s)).startsWith("[\x90\xda\x91\xb1\x8f\xee\x95\xf1]\r\n"));
}

TEST_F(Installation, IsLeftAloneUntilAskedForAgain) {
    ASSERT_EQ(make(), SampleOutcome::Made);
    write(at(u"DATA/印刷設定.ini"_s), "changed");
    write(at(u"DATA/mine.txt"_s), "mine");
    EXPECT_EQ(make(), SampleOutcome::LeftAsItIs);
    EXPECT_EQ(bytesOf(at(u"DATA/印刷設定.ini"_s)), "changed");

    m_options.again = true;
    EXPECT_EQ(make(), SampleOutcome::Made);
    EXPECT_NE(bytesOf(at(u"DATA/印刷設定.ini"_s)), "changed");
    EXPECT_EQ(bytesOf(at(u"DATA/mine.txt"_s)), "mine");
}

TEST_F(Installation, IsMadeWholeAfterARunThatWasBrokenOff) {
    ASSERT_EQ(make(), SampleOutcome::Made);
    write(at(u"sample-installation.txt"_s), "unfinished\r\n");
    QFile::remove(at(u"adodb.ini"_s));
    EXPECT_EQ(make(), SampleOutcome::Made);
    EXPECT_TRUE(QFile::exists(at(u"adodb.ini"_s)));
}

TEST_F(Installation, RefusesFoldersThatItMayNotTouch) {
    ASSERT_TRUE(QDir().mkpath(m_options.folder));
    write(at(u"adodb.ini"_s), "somebody's");
    for (const bool again : {false, true}) {
        m_options.again = again;
        EXPECT_EQ(make(), SampleOutcome::Refused);
    }
    EXPECT_EQ(bytesOf(at(u"adodb.ini"_s)), "somebody's");
    EXPECT_EQ(QDir(m_options.folder).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size(), 1);

    const QStringList unusable = {
        u"a;b"_s, u"𠮷"_s,
        u"long/"_s.repeated(50), // its path passes the 255 bytes of a setting
    };
    for (const QString &name : unusable) {
        m_options.folder = QDir::cleanPath(m_temporary.filePath(name));
        EXPECT_EQ(make(), SampleOutcome::Refused) << name.toStdString();
        EXPECT_FALSE(QFile::exists(m_options.folder)) << name.toStdString();
    }
    m_options.folder = m_temporary.filePath(u"file"_s);
    write(m_options.folder, "somebody's");
    EXPECT_EQ(make(), SampleOutcome::Refused);
    EXPECT_EQ(bytesOf(m_options.folder), "somebody's");
}

TEST_F(Installation, HoldsTheProgramsThatAreStartedByName) {
    m_options.programs = m_temporary.filePath(u"bin"_s);
    EXPECT_EQ(sample::makeInstallation(m_options).outcome, SampleOutcome::Failed); // no such program
    ASSERT_TRUE(QDir().mkpath(m_options.programs));
    const QDir programs(m_options.programs);
    for (const QString &program : {u"douisho-menu"_s, u"wfrfv10"_s, u"wfrimg10"_s})
        write(programs.filePath(program), "one");
    ASSERT_EQ(make(), SampleOutcome::Made);
    for (const QString &program : {u"douisho-menu"_s, u"wfrfv10"_s, u"wfrimg10"_s})
        write(programs.filePath(program), program.toUtf8()); // rebuilt
    EXPECT_EQ(bytesOf(at(u"Main.exe"_s)), "douisho-menu");
    EXPECT_EQ(bytesOf(at(u"wfrfv10.exe"_s)), "wfrfv10");
    EXPECT_EQ(bytesOf(at(u"WrVb6Viewer.exe"_s)), "wfrfv10");
    EXPECT_EQ(bytesOf(at(u"wfrimg10.exe"_s)), "wfrimg10");
}

} // namespace
