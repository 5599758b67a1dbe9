#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QString>
#include <chrono>

class QFileInfo;

/// The time as a folder's file server has it: clocks of PCs differ, and ages are asked for in seconds.
class FolderClock {
public:
    explicit FolderClock(QString folder) : m_folder(std::move(folder)) {}

    /// How long ago a file of the folder was written. Nothing is old in a folder that takes no files.
    std::chrono::milliseconds ageOf(const QFileInfo &file);

private:
    QString m_folder;
    QDateTime m_asked; ///< the folder's time when it was asked for, once
    QElapsedTimer m_since;
};
