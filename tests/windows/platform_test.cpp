// What app/base/platform/ does on Windows: files that others look at, programs with what they start.

#include "app/base/platform/desktop.h"
#include "app/base/platform/files.h"
#include "app/base/platform/native.h"
#include "app/base/platform/processes.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray bytesOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool soon(const std::function<bool()> &holds) {
    QElapsedTimer timer;
    for (timer.start(); !holds(); QThread::msleep(20))
        if (timer.elapsed() > 10'000)
            return false;
    return true;
}

/// This program again, as one of the tests that are for that.
QStringList asChild(const QString &test) {
    return {u"--gtest_also_run_disabled_tests"_s, u"--gtest_filter=Child.DISABLED_"_s + test};
}

TEST(Child, DISABLED_Sleeps) {
    QThread::sleep(60);
}

TEST(Child, DISABLED_StartsAnother) {
    qint64 id = 0;
    QProcess::startDetached(QCoreApplication::applicationFilePath(), asChild(u"Sleeps"_s), {}, &id);
    QFile file(qEnvironmentVariable("DOUISHO_TEST_FILE"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::number(id));
    file.close();
    QThread::sleep(60);
}

TEST(Child, DISABLED_TellsItsWindow) {
    STARTUPINFOW info{};
    GetStartupInfoW(&info);
    std::exit(info.dwFlags & STARTF_USESHOWWINDOW ? info.wShowWindow : 0);
}

class WindowsFiles : public testing::Test {
protected:
    WindowsFiles() {
        QFile old(place);
        EXPECT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
        EXPECT_TRUE(written.open(QIODevice::WriteOnly) && written.write("new") == 3 && written.flush());
    }

    QTemporaryDir folder;
    QString place = folder.filePath(u"設定.ini"_s);
    QFile written{folder.filePath(u"設定.ini.new"_s)};
};

TEST_F(WindowsFiles, AFileTakesAnothersPlaceWhenItsReaderLeaves) {
    EXPECT_EQ(platform::syncToDisk(written).toStdString(), "");
    auto reader = std::make_unique<QFile>(place);
    ASSERT_TRUE(reader->open(QIODevice::ReadOnly));
    std::thread leaving([&] {
        QThread::msleep(200);
        reader.reset();
    });
    EXPECT_EQ(platform::moveOver(written, place).toStdString(), "");
    leaving.join();
    EXPECT_EQ(bytesOf(place), "new");
    EXPECT_FALSE(QFile::exists(written.fileName()));
}

TEST_F(WindowsFiles, AFileThatStaysOpenIsToldAndKept) {
    QFile reader(place);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    EXPECT_NE(platform::moveOver(written, place).toStdString(), "");
    reader.close();
    EXPECT_EQ(bytesOf(place), "old");
    EXPECT_EQ(bytesOf(written.fileName()), "new");
}

TEST_F(WindowsFiles, AFileIsRemovedWhenItsReaderLeaves) {
    auto reader = std::make_unique<QFile>(place);
    ASSERT_TRUE(reader->open(QIODevice::ReadOnly));
    std::thread leaving([&] {
        QThread::msleep(200);
        reader.reset();
    });
    EXPECT_TRUE(platform::removeFile(place));
    leaving.join();
    EXPECT_FALSE(QFile::exists(place));
    EXPECT_TRUE(platform::removeFile(place)) << "gone already";
    EXPECT_FALSE(platform::removeFile(folder.path())) << "no file";
}

TEST(WindowsDrives, AShareIsToldByItsName) {
    EXPECT_TRUE(platform::isOnNetworkDrive(u"//server/share/無い/x.db"_s));
    EXPECT_FALSE(platform::isOnNetworkDrive(u"C:/無い/x.db"_s));
}

TEST_F(WindowsFiles, APlacedProgramIsACopyAndNeverItsOwnEnd) {
    const QString program = platform::programFile(folder.filePath(u"wfrfv10"_s));
    EXPECT_FALSE(platform::placeProgram(program, folder.filePath(u"x.exe"_s)));
    ASSERT_TRUE(QFile::copy(place, program));
    EXPECT_TRUE(platform::placeProgram(program, program));
    EXPECT_TRUE(platform::placeProgram(program, folder.filePath(u"WrVb6Viewer.exe"_s)));
    EXPECT_EQ(bytesOf(program), "old");
    EXPECT_EQ(bytesOf(folder.filePath(u"WrVb6Viewer.exe"_s)), "old");
}

TEST(WindowsProcesses, ATreeIsKilledWhole) {
    const QTemporaryDir folder;
    const QString idFile = folder.filePath(u"id"_s);
    qputenv("DOUISHO_TEST_FILE", QFile::encodeName(idFile));
    QProcess process;
    process.setProgram(QCoreApplication::applicationFilePath());
    process.setArguments(asChild(u"StartsAnother"_s));
    platform::ProcessTree tree(process);
    tree.start();
    ASSERT_TRUE(soon([&] { return bytesOf(idFile).toLongLong() > 0; }));
    const qint64 child = process.processId();
    const qint64 grandchild = bytesOf(idFile).toLongLong();
    EXPECT_TRUE(platform::runs(child) && platform::runs(grandchild));
    tree.kill();
    EXPECT_TRUE(soon([&] { return !platform::runs(child) && !platform::runs(grandchild); }));
    EXPECT_FALSE(platform::runs(0));
}

TEST(WindowsProcesses, AProgramLearnsHowItsWindowShallOpen) {
    for (const WindowStyle style : {WindowStyle::AsItLikes, WindowStyle::Minimized, WindowStyle::Maximized}) {
        QProcess process;
        process.setProgram(QCoreApplication::applicationFilePath());
        process.setArguments(asChild(u"TellsItsWindow"_s));
        platform::setWindowStyle(process, style);
        process.start();
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), style == WindowStyle::AsItLikes ? 0 : int(style));
    }
}

TEST(WindowsDesktop, TellsTheComputersName) {
    EXPECT_FALSE(platform::computerName().isEmpty());
    EXPECT_LE(platform::computerName().size(), 15);
}

} // namespace
