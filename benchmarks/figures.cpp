#include "benchmarks/figures.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>

double median(std::vector<double> values) {
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double millisecondsOf(const std::function<void()> &work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

void stop(const QString &reason) {
    std::fprintf(stderr, "%s\n", reason.toUtf8().constData());
    std::exit(2);
}

void Figures::compare(const char *name, double ours, const char *yardstick, double theirs,
                      double allowedRatio) {
    const double ratio = ours / theirs;
    std::printf("%-58s %8.1f ms, %s %.1f ms, ratio %.2f (allowed %.4g): %s\n", name, ours, yardstick, theirs,
                ratio, allowedRatio, verdict(ratio <= allowedRatio));
}

void Figures::limit(const char *name, double ours, double allowed) {
    std::printf("%-58s %8.1f ms (allowed %.0f ms): %s\n", name, ours, allowed, verdict(ours < allowed));
}

void Figures::count(const char *name, double ours, double allowed) {
    std::printf("%-58s %8.3g (allowed %.3g): %s\n", name, ours, allowed, verdict(ours <= allowed));
}

void Figures::note(const char *name, double ours) {
    std::printf("%-58s %8.1f ms (no limit set)\n", name, ours);
}

void Figures::check(const char *name, bool holds) {
    std::printf("%-58s %s\n", name, verdict(holds));
}

const char *Figures::verdict(bool good) {
    m_missed = m_missed || !good;
    return good ? "ok" : "MISSED";
}
