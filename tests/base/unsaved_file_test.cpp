// What a run holds unsaved outlives the run, killed at any moment, and belongs to nobody else while it lives.

#include "app/base/unsaved_file.h"
#include "tests/support/test_environment.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString name = u"list"_s;

// The program that is killed: each file is longer than the one before, and says how long it is.
[[noreturn]] void writeUntilKilled(const QString &folder) {
    UnsavedFile file(folder, name);
    for (int length = 1;; ++length)
        if (!file.write(QByteArray::number(length) + ' ' + QByteArray(length * 100, 'x')))
            std::abort();
}

} // namespace

TEST(UnsavedFile, AKilledRunLeavesTheLastWholeFileToTheNext) {
    if (const QString folder = qEnvironmentVariable("DOUISHO_VICTIM_FOLDER"); !folder.isEmpty())
        writeUntilKilled(folder);
    const QTemporaryDir place;
    const QString folder = place.filePath(u"unsaved"_s);
    for (int round = 0; round < 10; ++round) {
        QProcess victim;
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert(u"DOUISHO_VICTIM_FOLDER"_s, folder);
        victim.setProcessEnvironment(variables);
        victim.start(QCoreApplication::applicationFilePath(), {u"--gtest_filter=UnsavedFile.*"_s});
        ASSERT_TRUE(victim.waitForStarted());
        const auto written = [&] { return QDir(folder).entryInfoList({u"*.unsaved"_s}, QDir::Files); };
        while (written().isEmpty())
            QThread::msleep(1);
        QThread::msleep(QRandomGenerator::system()->bounded(30u));
        EXPECT_TRUE(UnsavedFile::left(folder, name).empty()) << "its run goes on";
        victim.kill();
        ASSERT_TRUE(victim.waitForFinished());

        const auto left = UnsavedFile::left(folder, name);
        ASSERT_EQ(left.size(), 1u);
        const Result<QByteArray> read = left.front()->read();
        ASSERT_TRUE(read) << read.reason().toStdString();
        EXPECT_EQ(read->size(), read->indexOf(' ') + 1 + read->left(read->indexOf(' ')).toInt() * 100);
        EXPECT_EQ(QFileInfo(left.front()->path()).permissions() &
                      (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
                  QFile::Permissions());
        EXPECT_TRUE(UnsavedFile::left(folder, name).empty()) << "taken";
        left.front()->remove();
    }
    EXPECT_TRUE(UnsavedFile::left(folder, u"lis"_s).empty());
}
