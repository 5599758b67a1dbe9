#pragma once

#include <QList>
#include <cstdint>
#include <random>

namespace sample {

/// Reproducible chance. The engine's numbers are fixed by the language, the distributions of the library
/// are not, so they are made here.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_engine(seed) {}

    /// A number from 0 to count − 1; 0 for a count of 0 and less. The skew of the remainder is of no weight
    /// for counts far below 2⁶⁴.
    int below(int count) {
        if (count <= 0)
            return 0;
        return static_cast<int>(m_engine() % static_cast<std::uint64_t>(count));
    }
    /// A number from first to last, both included.
    int between(int first, int last) { return first + below(last - first + 1); }
    bool percent(int chance) { return below(100) < chance; }

    template <class T> const T &pick(const QList<T> &from) {
        return from.at(below(static_cast<int>(from.size())));
    }
    template <class T> void shuffle(QList<T> &items) {
        for (qsizetype i = items.size() - 1; i > 0; --i)
            items.swapItemsAt(i, below(static_cast<int>(i) + 1));
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace sample
