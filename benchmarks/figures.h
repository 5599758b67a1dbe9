#pragma once

#include <QString>
#include <functional>
#include <vector>

/// The median of at least one value.
double median(std::vector<double> values);

/// Milliseconds that the work took.
double millisecondsOf(const std::function<void()> &work);

/// Ends the benchmark with exit code 2: it could not measure.
[[noreturn]] void stop(const QString &reason);

/// Prints one line a figure and remembers whether one missed its limit. Times are in milliseconds.
class Figures {
public:
    /// A time beside a yardstick's, measured in the same run.
    void compare(const char *name, double ours, const char *yardstick, double theirs, double allowedRatio);
    void limit(const char *name, double ours, double allowed);
    /// Something that is counted.
    void count(const char *name, double ours, double allowed);
    /// A time for which no limit is set.
    void note(const char *name, double ours);
    /// Something that holds or does not.
    void check(const char *name, bool holds);

    /// 0, or 1 when a figure missed its limit.
    int exitCode() const { return m_missed ? 1 : 0; }

private:
    const char *verdict(bool good);

    bool m_missed = false;
};
