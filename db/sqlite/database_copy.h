#pragma once

#include "app/base/result.h"

#include <stop_token>

/// Copies an embedded database as it stands at this moment while programs go on working with it, by the
/// engine's online backup. The copy is checked and on the disk before it takes its name; an older file of
/// that name is replaced. A failed or stopped copy leaves nothing and is told with the file's name.
Result<> copyDatabase(const QString &from, const QString &to, const std::stop_token &stop = {});
