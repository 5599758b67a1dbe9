#pragma once

#include <QDate>
#include <algorithm>
#include <utility>
#include <vector>

/// The days off of a branch.
class Holidays {
public:
    Holidays() = default;
    /// @param days in any order; invalid dates are left out
    explicit Holidays(std::vector<QDate> days) : m_days(std::move(days)) {
        std::erase_if(m_days, [](const QDate &day) { return !day.isValid(); });
        std::sort(m_days.begin(), m_days.end());
    }

    bool contains(const QDate &day) const { return std::binary_search(m_days.begin(), m_days.end(), day); }
    bool isEmpty() const { return m_days.empty(); }

private:
    std::vector<QDate> m_days; ///< sorted
};
