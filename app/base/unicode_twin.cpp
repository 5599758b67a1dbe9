#include "app/base/unicode_twin.h"

#include <QCryptographicHash>
#include <QFile>

namespace {

/// "douisho 120 9f86d0…\n": the bytes and their hash.
QByteArray firstLine(QByteArrayView data) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(data);
    return "douisho " + QByteArray::number(data.size()) + ' ' + hash.result().toHex() + '\n';
}

} // namespace

QByteArray UnicodeTwin::of(QByteArrayView data, QByteArrayView text) {
    return firstLine(data) + text.toByteArray();
}

QByteArray UnicodeTwin::textBeside(const QString &dataFile, QByteArrayView data) {
    QFile file(pathFor(dataFile));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray twin = file.readAll();
    const QByteArray wanted = firstLine(data);
    return twin.startsWith(wanted) ? twin.sliced(wanted.size()) : QByteArray();
}
