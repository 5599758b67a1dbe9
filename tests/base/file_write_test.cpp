#include "app/base/file_write.h"
#include "app/base/ini_file.h"
#include "tests/support/test_environment.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {
int diskAnswers = 0; ///< the error of the disk that the program waits for
}

/// In the C library's place.
extern "C" int fsync(int descriptor) {
    errno = diskAnswers;
    return diskAnswers ? -1 : int(syscall(SYS_fsync, descriptor));
}

namespace {

class FileWrite : public testing::Test {
protected:
    FileWrite() { EXPECT_TRUE(writeFileWhole(path, "old")); }
    ~FileWrite() override { diskAnswers = 0; }

    QByteArray bytes() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "(none)"_ba;
    }
    QStringList entries() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
    static unsigned mode(const QString &file) {
        struct stat status;
        return stat(qUtf8Printable(file), &status) == 0 ? status.st_mode & 0777 : 0;
    }
    void makeOlder(const QString &name, int seconds) const {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime::currentDateTime().addSecs(-seconds), QFileDevice::FileModificationTime);
    }
    /// Runs the write in a child process that may write 100 bytes at most.
    int limitedWrite(qsizetype size, bool dieAtLimit) const {
        const pid_t child = fork();
        if (child == 0) {
            const rlimit limit{100, 100};
            setrlimit(RLIMIT_FSIZE, &limit);
            const rlimit noCore{0, 0};
            setrlimit(RLIMIT_CORE, &noCore);
            signal(SIGXFSZ, dieAtLimit ? SIG_DFL : SIG_IGN);
            const Result<> written = writeFileWhole(path, QByteArray(size, 'x'));
            _exit(written ? 1 : written.reason().contains(path) ? 0 : 2);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return status;
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"設定.ini"_s);
};

TEST_F(FileWrite, KeepsTheOldFileWhenTheDiskRefusesTheNewOne) {
    for (const int error : {EIO, ENOSPC, EDQUOT}) {
        diskAnswers = error;
        const Result<> written = writeFileWhole(path, "new");
        EXPECT_FALSE(written) << error;
        EXPECT_TRUE(written.reason().contains(path) && written.reason().contains(qt_error_string(error)))
            << written.reason().toStdString();
        clsOplIniFile ini;
        ini.iInit(path);
        EXPECT_EQ(ini.iWriteProfileString(u"s"_s, u"k"_s, u"1"_s), -1);
        EXPECT_EQ(bytes(), "old");
    }
    EXPECT_EQ(entries(), QStringList{u"設定.ini"_s});
    diskAnswers = EINVAL; // a file system that cannot wait
    EXPECT_TRUE(writeFileWhole(path, "new"));
    EXPECT_EQ(bytes(), "new");
}

TEST_F(FileWrite, KeepsTheOldFileWhenItEndsHalfWay) {
    for (const qsizetype size : {200, 1'000'000}) { // small ones wait in a buffer
        const int full = limitedWrite(size, false);
        EXPECT_TRUE(WIFEXITED(full) && WEXITSTATUS(full) == 0); // failed, with a reason that names the file
        EXPECT_EQ(bytes(), "old");
        EXPECT_EQ(entries(), QStringList{u"設定.ini"_s});
    }
}

TEST_F(FileWrite, ClearsWhatAKilledRunLeftAndNothingElse) {
    const int killed = limitedWrite(1'000'000, true);
    EXPECT_TRUE(WIFSIGNALED(killed));
    ASSERT_EQ(entries().size(), 2);
    const QString left = entries()[1];
    EXPECT_TRUE(writeFileWhole(path, "new"));
    EXPECT_TRUE(entries().contains(left)); // it may just have been made
    makeOlder(left, 5);

    WholeFile live(path); // a colleague's, slow
    ASSERT_TRUE(live.open());
    live.device().write("later");
    makeOlder(QFileInfo(live.device()).fileName(), 86400);
    for (const QString &name : {u"設定.ini.backup"_s, u"設定.ini.douisho-old"_s, u"別.ini.douisho-abcdef"_s})
        makeOlder(name, 86400);

    EXPECT_TRUE(writeFileWhole(path, "new"));
    EXPECT_FALSE(entries().contains(left));
    EXPECT_EQ(entries().size(), 5);
    EXPECT_TRUE(live.commit());
    EXPECT_EQ(bytes(), "later");
}

TEST_F(FileWrite, KeepsPermissionsAndLinks) {
    chmod(qUtf8Printable(path), 0640);
    const QString link = folder.filePath(u"link.ini"_s);
    ASSERT_TRUE(QFile::link(path, link));
    EXPECT_TRUE(writeFileWhole(link, "new"));
    EXPECT_EQ(mode(path), 0640U);
    EXPECT_EQ(bytes(), "new");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
}

TEST_F(FileWrite, KeepsPrivateFilesToTheirOwner) {
    const mode_t old = umask(0);
    for (const FileWriter write : {writeFileWhole, writeFileInPlace}) {
        const QString made = folder.filePath(u"made.csv"_s);
        EXPECT_TRUE(write(made, "1", FileUse::Private));
        EXPECT_EQ(mode(made), 0600U);
        chmod(qUtf8Printable(made), 0644);
        EXPECT_TRUE(write(made, "2", FileUse::Private));
        EXPECT_EQ(mode(made), 0600U);
        QFile::remove(made);
    }
    umask(old);
}

} // namespace
