#include "setup/layouts.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace setup {

namespace {

const QString folder = u":/setup/layouts/"_s; // part of the program

} // namespace

QStringList layoutNames() {
    return QDir(folder).entryList(QDir::Files);
}

QByteArray layoutBytes(const QString &name) {
    QFile file(folder + name);
    [[maybe_unused]] const bool opened = file.open(QIODevice::ReadOnly);
    Q_ASSERT(opened);
    return file.readAll();
}

} // namespace setup
