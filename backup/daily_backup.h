#pragma once

#include <QDate>
#include <QObject>
#include <thread>

struct Environment;

/// Looks after the embedded database while the program runs: makes the day's copy on a thread of its own, and
/// says in the window's foot when that fails, when the last copy is older than a week, and once that the
/// database lies on a network drive. Servers are looked after by others.
class DailyBackup : public QObject {
public:
    explicit DailyBackup(Environment &environment);

    /// Begins when the first window has been painted, and looks again while windows stay open over midnight.
    void begin();
    /// Looks now. Nothing more happens on a day that was looked at.
    void look();
    /// Returns when what was begun is done.
    void wait();

private:
    Environment &m_environment;
    QDate m_day; ///< looked at last
    std::jthread m_work;
};
