#include "consent/screens/kept_columns.h"

#include "consent/rows/list_columns.h"

#include <QCryptographicHash>
#include <QSettings>

using namespace Qt::Literals::StringLiterals;

namespace {

QSettings windowSettings() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, u"douisho"_s, u"windows"_s);
}

// Widths are kept by position: they hold for the columns that they were kept of only.
QString key() {
    QString captions;
    for (const ListColumnInfo &info : listColumns())
        captions += info.caption + u'\n';
    const QByteArray hash = QCryptographicHash::hash(captions.toUtf8(), QCryptographicHash::Md5);
    return u"consent_list/"_s + QString::fromLatin1(hash.toHex());
}

} // namespace

QByteArray keptColumns() {
    return windowSettings().value(key()).toByteArray();
}

void keepColumns(const QByteArray &state) {
    windowSettings().setValue(key(), state);
}
