#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <gtest/gtest.h>

/// The test's own program once more, to be killed at work: it says "ready", waits for a line and begins.
class Victim {
public:
    explicit Victim(const QStringList &arguments) {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationFilePath(), arguments);
        EXPECT_TRUE(m_process.waitForReadyRead(10000));
        EXPECT_EQ(m_process.readLine().trimmed(), QByteArray("ready"));
    }
    void go() {
        m_process.write("\n");
        m_process.waitForBytesWritten();
    }
    void kill() {
        m_process.kill();
        m_process.waitForFinished();
    }
    /// What it printed; "" when it did not come to its end.
    QByteArray finish() {
        m_process.waitForFinished(60000);
        return m_process.readAllStandardOutput().trimmed();
    }

private:
    QProcess m_process;
};
