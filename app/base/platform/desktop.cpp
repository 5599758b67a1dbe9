#include "app/base/platform/desktop.h"

namespace platform {

QSettings userSettings(const QString &name) {
    return {QSettings::IniFormat, QSettings::UserScope, QStringLiteral("douisho"), name};
}

} // namespace platform
