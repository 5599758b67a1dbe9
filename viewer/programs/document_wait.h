#pragma once

#include <QString>
#include <chrono>
#include <functional>

enum class WaitResult { Ready, Cancelled, TimedOut };

/// Whether a finished document is not there yet, or shorter than it says.
bool isBeingBuilt(const QString &path);

/// Waits until a document is there whole.
/// @param pause lets a moment pass; false gives up
WaitResult waitForDocument(const QString &path, std::chrono::milliseconds limit,
                           const std::function<bool()> &pause);
