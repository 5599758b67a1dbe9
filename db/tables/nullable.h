#pragma once

/// A number that may be Null in its column. Read as a number, Null is 0.
template <class T> class Nullable {
public:
    constexpr Nullable() = default;
    constexpr Nullable(T value) : m_value(value), m_null(false) {}

    constexpr operator T() const { return m_value; }
    constexpr bool isNull() const { return m_null; }
    constexpr void setNull() { *this = Nullable(); }

    /// Null equals Null only, not 0.
    constexpr bool same(const Nullable &other) const {
        return m_null == other.m_null && m_value == other.m_value;
    }

private:
    T m_value{};
    bool m_null = true;
};
