#pragma once

#include <QString>

#include <optional>

/// What is done, in the user's words, up to 40 characters: 同意更新, 一覧の保存. `batch` is the number of the
/// run that it belongs to.
struct Operation {
    QString name;
    std::optional<qint32> batch = {};
};
