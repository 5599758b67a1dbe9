#pragma once

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

/// Work on a thread of its own, which is left behind when nobody waits for it any longer: some drivers and
/// file servers say nothing for ever. So it must own all that it uses. Without a thread to be had it runs at
/// once.
template <class T> class Apart {
public:
    explicit Apart(std::function<T()> work) : m_shared(std::make_shared<Shared>()) {
        try {
            // It lets itself go: on Windows a thread that is let go before it runs may never do so.
            const std::lock_guard lock(m_shared->mutex);
            m_shared->thread = std::thread([shared = m_shared, call = work]() mutable {
                shared->letGo();
                shared->run(call);
            });
            return;
        } catch (const std::system_error &) { // below, where nobody holds the lock
        }
        m_shared->run(work);
    }

    /// What the work gives, if it does so by `end`; what it throws is thrown here. Asked once.
    /// @param meanwhile called some twenty times a second while the caller waits
    std::optional<T> resultBy(std::chrono::steady_clock::time_point end,
                              const std::function<void()> &meanwhile = {}) const {
        const auto isDone = [&] { return m_shared->result.has_value() || m_shared->thrown; };
        std::unique_lock lock(m_shared->mutex);
        while (meanwhile && std::chrono::steady_clock::now() < end) {
            constexpr std::chrono::milliseconds betweenCalls(50);
            if (m_shared->done.wait_for(lock, betweenCalls, isDone))
                break;
            lock.unlock();
            meanwhile();
            lock.lock();
        }
        m_shared->done.wait_until(lock, end, isDone);
        if (m_shared->thrown)
            std::rethrow_exception(m_shared->thrown);
        return std::move(m_shared->result);
    }

private:
    struct Shared {
        std::mutex mutex;
        std::condition_variable done;
        std::optional<T> result;
        std::exception_ptr thrown;
        std::thread thread;

        void letGo() {
            const std::lock_guard lock(mutex);
            thread.detach();
        }

        void run(std::function<T()> &call) {
            std::optional<T> given;
            std::exception_ptr fault;
            try {
                given = call();
            } catch (...) { // for want of memory, say
                fault = std::current_exception();
            }
            call = nullptr; // whoever gets the result may be the last to hold what was worked on
            const std::lock_guard lock(mutex);
            result = std::move(given);
            thrown = fault;
            done.notify_one();
        }
    };

    std::shared_ptr<Shared> m_shared;
};

/// What `work` gives, if it does so within `limit`.
template <class T>
std::optional<T> within(std::chrono::milliseconds limit, const std::function<T()> &work,
                        const std::function<void()> &meanwhile = {}) {
    const Apart<T> apart(work);
    return apart.resultBy(std::chrono::steady_clock::now() + limit, meanwhile);
}
