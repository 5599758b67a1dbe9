#pragma once

#include "app/base/platform/desktop.h"
#include "app/base/result.h"

#include <QDir>

/// What this user's windows keep for the next run.
inline QSettings windowSettings() {
    return platform::userSettings(QStringLiteral("windows"));
}

/// Writes it now. @param what could not be kept when that fails: "列の幅と順序"
inline Result<> writeNow(QSettings &settings, const QString &what) {
    settings.sync();
    if (settings.status() == QSettings::NoError)
        return {};
    return Failure{what + QStringLiteral("を保存できませんでした。「%1」に書き込めるか確認してください。")
                              .arg(QDir::toNativeSeparators(settings.fileName()))};
}
