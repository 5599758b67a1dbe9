#pragma once

#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>

struct Environment;

/// How a program that was waited for came to its end.
struct ProcessEnd {
    enum How {
        NotStarted, ///< no such program, or the system refused
        TimedOut,   ///< took too long and was killed
        GivenUp,    ///< killed because `goOn` said so
        Crashed,
        Exited
    };
    How how = NotStarted;
    int exitCode = 0; ///< of a program that exited

    bool succeeded() const { return how == Exited && exitCode == 0; }
};

/// How a program's window looks at first, where the system has a way to ask for it; the numbers are the
/// engine's.
enum class WindowStyle { AsItLikes = 1, Minimized = 2, Maximized = 3 };

/// The port through which other programs are found and started. A started program inherits nothing of this
/// one but its output: it reads from nowhere and holds none of its files.
class Processes {
public:
    virtual ~Processes() = default;

    /// Full path of a program by its name, with or without ".exe", ignoring case: looked for in `folder`,
    /// then in the folders of the system's search path, then beside this program. Empty when there is none.
    virtual QString find(const QString &name, const QString &folder) const = 0;

    /// Starts a program and does not wait for it.
    /// @param program full path of the executable
    /// @param folder the new process's current directory
    /// @param id takes the number by which runs() knows it
    /// @return false when there is no such program or it cannot be started
    virtual bool start(const QString &program, const QStringList &arguments, const QString &folder,
                       qint64 *id = nullptr, WindowStyle style = WindowStyle::AsItLikes) = 0;

    /// Whether a program with that number runs on this PC.
    virtual bool runs(qint64 id) const = 0;

    /// Starts a program and waits for its end, at most `timeOut`; then it is killed with all that it started.
    /// Its window is minimized.
    /// @param goOn called many times a second, so that windows can be painted; false kills the program. May
    /// be empty.
    virtual ProcessEnd run(const QString &program, const QStringList &arguments, const QString &folder,
                           std::chrono::milliseconds timeOut, const std::function<bool()> &goOn) = 0;
};

/// The operating system's processes.
class SystemProcesses : public Processes {
public:
    QString find(const QString &name, const QString &folder) const override;
    bool start(const QString &program, const QStringList &arguments, const QString &folder,
               qint64 *id = nullptr, WindowStyle style = WindowStyle::AsItLikes) override;
    bool runs(qint64 id) const override;
    ProcessEnd run(const QString &program, const QStringList &arguments, const QString &folder,
                   std::chrono::milliseconds timeOut, const std::function<bool()> &goOn) override;
};

/// Starts another program of the suite, which lies in the program folder, in that folder and without waiting
/// for it. When it is missing or cannot be started the user is told.
/// @param fileName e.g. "Main.exe"
bool startSibling(Environment &environment, const QString &fileName, const QStringList &arguments = {});
