#pragma once

#include <QString>
#include <QStringList>

/// The port through which sibling programs are started.
class Processes {
public:
    virtual ~Processes() = default;

    /// Starts a program and does not wait for it.
    /// @param program full path of the executable
    /// @param folder the new process's current directory
    /// @return false when there is no such program or it cannot be started
    virtual bool start(const QString &program, const QStringList &arguments, const QString &folder) = 0;
};

/// The operating system's processes.
class SystemProcesses : public Processes {
public:
    bool start(const QString &program, const QStringList &arguments, const QString &folder) override;
};
