#include "consent/list/list_screens.h"

#include <QHash>

using namespace Qt::Literals::StringLiterals;

OpenScreen screenOf(const QString &command) {
    static const QHash<QString, OpenScreen> screens{};
    return screens.value(command);
}
