#include "print/engine/folder_clock.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

using namespace Qt::Literals::StringLiterals;

std::chrono::milliseconds FolderClock::ageOf(const QFileInfo &file) {
    if (!m_asked.isValid()) {
        QTemporaryFile made(QDir(m_folder).filePath(u".douisho-clock-XXXXXX"_s));
        if (!made.open())
            return {};
        m_asked = made.fileTime(QFileDevice::FileModificationTime);
        m_since.start();
    }
    return std::chrono::milliseconds(file.lastModified().msecsTo(m_asked) + m_since.elapsed());
}
