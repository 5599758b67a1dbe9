#include "app/base/version.h"

#include "app/base/settings.h"

#include <QVersionNumber>

using namespace Qt::Literals::StringLiterals;

QString ownVersion() {
    return QStringLiteral(DOUISHO_VERSION);
}

bool isOlderVersion(const QString &version, const QString &than) {
    return QVersionNumber::fromString(version) < QVersionNumber::fromString(than);
}

Result<QString> newestVersionUsed(const Folders &folders) {
    const QString key = u"最新版"_s;
    SettingsSection section(folders, u"プログラム版.ini"_s, u"同意書管理"_s);
    if (const Result<> read = section.readable(); !read && !section.isNotMadeYet())
        return Failure{read.reason()};
    const QString kept = section.text(key);
    if (!isOlderVersion(kept, ownVersion()))
        return kept;
    if (const Result<> written = section.write({{key, ownVersion()}}); !written)
        return Failure{written.reason()};
    return ownVersion();
}
