#pragma once

#include <QString>
#include <type_traits>
#include <utility>
#include <variant>

/// Why something could not be done: a sentence for the user that names the file, row or server.
struct Failure {
    QString reason;
};

/// The value of an operation, or the reason why there is none:
///
///     Result<Settings> read = readSettings(folders);
///     if (!read)
///         return Failure{read.reason()};
///     use(*read);
template <class T = void> class [[nodiscard]] Result {
public:
    Result(T value) : m_content(std::move(value)) {}
    Result(Failure failure) : m_content(std::move(failure)) {}

    explicit operator bool() const { return m_content.index() == 0; }
    /// @name The value; only when there is one
    ///@{
    T &operator*() { return *std::get_if<0>(&m_content); }
    const T &operator*() const { return *std::get_if<0>(&m_content); }
    T *operator->() { return std::get_if<0>(&m_content); }
    const T *operator->() const { return std::get_if<0>(&m_content); }
    ///@}
    /// The reason; empty when there is a value.
    QString reason() const { return *this ? QString() : std::get_if<1>(&m_content)->reason; }

private:
    static_assert(!std::is_same_v<T, Failure>);
    std::variant<T, Failure> m_content;
};

/// The outcome of an operation without a value: done, or why not.
template <> class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Failure failure) : m_reason(std::move(failure.reason)), m_done(false) {}

    explicit operator bool() const { return m_done; }
    const QString &reason() const { return m_reason; }

private:
    QString m_reason;
    bool m_done = true;
};
