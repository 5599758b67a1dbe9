#pragma once

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/processes.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <deque>
#include <iosfwd>

/// So that a failed comparison shows the text and not its bytes.
void PrintTo(const QString &text, std::ostream *out);
void PrintTo(const QStringList &texts, std::ostream *out);
void PrintTo(const QByteArray &bytes, std::ostream *out);
void PrintTo(const QDate &date, std::ostream *out);

/// Whether this is Windows or what stands in for it.
bool onWindows();

/// A clock that stands still until it is set.
class FixedClock : public Clock {
public:
    explicit FixedClock(const QDateTime &at) : m_now(at) {}
    explicit FixedClock(const QDate &day) : m_now(day, QTime(9, 0)) {}
    QDateTime now() const override { return m_now; }
    void set(const QDate &day) { m_now = QDateTime(day, QTime(9, 0)); }

private:
    QDateTime m_now;
};

/// Records all that is said, in its order, and answers boxes from a script; without one, by the box's
/// default.
class RecordedMessages : public Messages {
public:
    Answer show(const Message &message) override;
    /// The texts since the last call.
    QStringList said();
    void note(const QString &text) override {
        shown.append({text, MessageIcon::None, {}});
        notes.append(text);
    }

    QList<Message> shown;
    QStringList notes; ///< what of it was said in the foot of a window
    std::deque<Answer> answers;
};

/// Records what was started, waited for or not; `missing` programs are not found and cannot be started. All
/// others are found in the folder that is searched first.
class RecordedProcesses : public Processes {
public:
    struct Start {
        QString program;
        QStringList arguments;
        QString folder;
        WindowStyle style = WindowStyle::AsItLikes;
        bool waitedFor = false;
    };
    QString find(const QString &name, const QString &folder) const override;
    bool start(const QString &program, const QStringList &arguments, const QString &folder,
               qint64 *id = nullptr, WindowStyle style = WindowStyle::AsItLikes) override;
    bool runs(qint64) const override { return false; }
    ProcessEnd run(const QString &program, const QStringList &arguments, const QString &folder,
                   std::chrono::milliseconds timeOut, const std::function<bool()> &goOn) override;

    QList<Start> started;
    QStringList missing; ///< file names
    /// What a program that is waited for does; without it, it succeeds.
    std::function<ProcessEnd(const Start &)> act;
};

/// An installation of its own for a fixture: empty folders, the clock at 2026/11/21, messages and processes
/// on record.
struct TestInstallation {
    QTemporaryDir programFolder;
    Folders folders{programFolder.path()};
    FixedClock clock{QDate(2026, 11, 21)};
    RecordedMessages messages;
    RecordedProcesses processes;
    Environment environment{folders, clock, messages, processes, {1, 1}};
};
