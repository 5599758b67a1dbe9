#include "app/base/processes.h"

#include "tests/support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QThread>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class ProcessesTest : public testing::Test {
protected:
    QString script(const QString &name, const QByteArray &lines, bool executable = true) {
        const QString path = m_folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + lines);
        if (executable)
            file.setPermissions(file.permissions() | QFile::ExeOwner);
        return path;
    }
    QByteArray written(const QString &name, std::chrono::milliseconds within = 5s) const {
        for (auto waited = 0ms; waited < within && !QFile::exists(m_folder.filePath(name)); waited += 10ms)
            QThread::msleep(10);
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    ProcessEnd run(const QByteArray &lines, std::chrono::milliseconds timeOut = 5s,
                   const std::function<bool()> &goOn = {}) {
        return m_processes.run(script(u"child"_s, lines), {}, m_folder.path(), timeOut, goOn);
    }
    /// Nothing that was started may be left for this process to collect.
    static bool hasChildren() { return waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD; }

    QTemporaryDir m_folder;
    SystemProcesses m_processes;
};

TEST_F(ProcessesTest, FindsAProgramInTheFolderThenInThePath) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(m_folder.filePath(u"path"_s)) + ':' + path);
    const QString suffixed = script(u"own/WFRFV10.EXE"_s, "");
    const QString bare = script(u"own/wfrimg10"_s, "");
    script(u"path/wfrimg10.exe"_s, "");
    script(u"own/broken.exe"_s, "", false);
    const QString other = script(u"path/Broken"_s, "");
    const QString own = m_folder.filePath(u"own"_s);
    EXPECT_EQ(m_processes.find(u"wfrfv10.exe"_s, own), suffixed);
    EXPECT_EQ(m_processes.find(u"wfrfv10"_s, own), suffixed);
    EXPECT_EQ(m_processes.find(u"wfrimg10.exe"_s, own), bare);
    EXPECT_EQ(m_processes.find(u"broken.exe"_s, own), other);
    EXPECT_EQ(m_processes.find(u"no such program.exe"_s, own), QString());
    qputenv("PATH", path);
}

TEST_F(ProcessesTest, StartsWithoutLeavingAChildOrHandingOnFiles) {
    // Without O_CLOEXEC, as a database driver opens its socket.
    const QByteArray mine = QFile::encodeName(m_folder.filePath(u"mine"_s));
    const int kept = open(mine.constData(), O_RDWR | O_CREAT, 0600);
    ASSERT_GT(kept, 2);
    const QString program =
        script(u"child"_s, "echo \"$1 $PWD $(readlink /proc/self/fd/0)\" > part\n"
                           "readlink /proc/$$/fd/* | grep '/mine$' >> part\nmv part told\n");
    ASSERT_TRUE(m_processes.start(program, {u"同意"_s}, m_folder.path()));
    EXPECT_EQ(written(u"told"_s), (u"同意 "_s + m_folder.path() + u" /dev/null\n"_s).toUtf8());
    EXPECT_FALSE(hasChildren());
    close(kept);
    EXPECT_FALSE(m_processes.start(m_folder.filePath(u"none"_s), {}, m_folder.path()));
}

TEST_F(ProcessesTest, TellsHowAProgramEnded) {
    EXPECT_TRUE(run("exit 0\n").succeeded());
    const ProcessEnd failed = run("exit 3\n");
    EXPECT_EQ(failed.how, ProcessEnd::Exited);
    EXPECT_EQ(failed.exitCode, 3);
    EXPECT_EQ(run("kill -SEGV $$\n").how, ProcessEnd::Crashed);
    EXPECT_EQ(m_processes.run(m_folder.filePath(u"none"_s), {}, m_folder.path(), 5s, {}).how,
              ProcessEnd::NotStarted);
    EXPECT_FALSE(hasChildren());
}

TEST_F(ProcessesTest, KillsAProgramThatHangsWithItsChildren) {
    const QByteArray hangs = "sleep 60 &\necho $! > sleeper\nwait\n";
    int looks = 0;
    EXPECT_EQ(run(hangs, 400ms, [&] { return ++looks > 0; }).how, ProcessEnd::TimedOut);
    EXPECT_GT(looks, 5);
    EXPECT_FALSE(hasChildren());
    const pid_t sleeper = written(u"sleeper"_s).trimmed().toInt();
    ASSERT_GT(sleeper, 0);
    // The orphan's end is collected by the system's first process.
    int tries = 0;
    while (kill(sleeper, 0) == 0 && ++tries < 300)
        QThread::msleep(10);
    EXPECT_LT(tries, 300);
    EXPECT_EQ(run(hangs, 60s, [] { return false; }).how, ProcessEnd::GivenUp);
}

} // namespace
