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

/// What `work` gives, if it does so within `limit`, whatever a driver does: some wait for ever for a server
/// that says nothing more. The work runs on a thread of its own, which is left behind when it is late; so it
/// must own all that it uses; what it throws is thrown here. Without a thread to be had it runs here, without
/// a limit.
/// @param meanwhile called some twenty times a second while the caller waits
template <class T>
std::optional<T> within(std::chrono::seconds limit, const std::function<T()> &work,
                        const std::function<void()> &meanwhile = {}) {
    struct Shared {
        std::mutex mutex;
        std::condition_variable done;
        std::optional<T> result;
        std::exception_ptr thrown;
    };
    const auto shared = std::make_shared<Shared>();
    try {
        std::thread([shared, call = work]() mutable {
            std::optional<T> result;
            std::exception_ptr thrown;
            try {
                result = call();
            } catch (...) { // for want of memory, say
                thrown = std::current_exception();
            }
            call = nullptr; // whoever gets the result may be the last to hold what was worked on
            const std::lock_guard lock(shared->mutex);
            shared->result = std::move(result);
            shared->thrown = thrown;
            shared->done.notify_one();
        }).detach();
    } catch (const std::system_error &) {
        return work();
    }
    const auto end = std::chrono::steady_clock::now() + limit;
    const auto isDone = [&] { return shared->result.has_value() || shared->thrown; };
    std::unique_lock lock(shared->mutex);
    while (meanwhile && std::chrono::steady_clock::now() < end) {
        constexpr std::chrono::milliseconds betweenCalls(50);
        if (shared->done.wait_for(lock, betweenCalls, isDone))
            break;
        lock.unlock();
        meanwhile();
        lock.lock();
    }
    shared->done.wait_until(lock, end, isDone);
    if (shared->thrown)
        std::rethrow_exception(shared->thrown);
    return std::move(shared->result);
}
