#pragma once

#include "app/base/result.h"

#include <QString>
#include <QSysInfo>
#include <chrono>
#include <functional>
#include <memory>

class Folders;
class Processes;
class QLockFile;
struct Environment;
struct JobTicket;

/// A PC in file names: letters, digits and underscores. No two have the same.
QString computerInNames(const QString &host = QSysInfo::machineHostName());

/// A name that no other run of printing has, on whatever PC: PC, process and a running number.
QString nextRunName();

/// Whether the files of printing are left in the work folder, so that a case can be looked into
/// (douisho.ini, 印刷, 作業ファイルを残す=1).
bool keepsPrintFiles(const Folders &folders);

/// Whether a ticket's viewer was started on this PC and runs no more.
bool viewerHasEnded(const Processes &processes, const JobTicket &ticket);

/// Held while files whose names are given (WfdCom.dat, Com.dat, 同意書データ.csv …) are written and one of
/// the engine's programs is to read them: all PCs have these names in the same folder. A crash gives it back.
class WorkFolderLock {
public:
    static constexpr std::chrono::seconds usualLimit{60};

    /// Waits until the folder is free; a failure says who holds it. On a drive that knows no locks, and in a
    /// folder that takes no files, it goes on without.
    /// @param goOn called many times a second; false gives up
    static Result<WorkFolderLock> take(const Environment &environment, const std::function<bool()> &goOn = {},
                                       std::chrono::milliseconds limit = usualLimit);

    WorkFolderLock(WorkFolderLock &&) noexcept;
    WorkFolderLock &operator=(WorkFolderLock &&) noexcept;
    ~WorkFolderLock();

private:
    explicit WorkFolderLock(std::unique_ptr<QLockFile> file);

    std::unique_ptr<QLockFile> m_file;
};

/// Removes what earlier runs left in the work folder because a program was killed, or because the engine's
/// viewer gives no sign that it has read its files: what no running program holds, or what is old enough.
void clearWorkFolder(const Environment &environment);
