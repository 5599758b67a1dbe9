#include "app/base/unicode_twin.h"

#include <QCryptographicHash>
#include <QFile>

namespace {

/// "douisho 120 9f86d0…\n": how many bytes of data, and the hash of these and the text.
QByteArray firstLine(QByteArrayView data, QByteArrayView text) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(data);
    hash.addData(text);
    return "douisho " + QByteArray::number(data.size()) + ' ' + hash.result().toHex() + '\n';
}

} // namespace

QByteArray UnicodeTwin::of(QByteArrayView data, QByteArrayView text) {
    return firstLine(data, text) + text.toByteArray();
}

QByteArray UnicodeTwin::textBeside(const QString &dataFile, QByteArrayView data) {
    QFile file(pathFor(dataFile));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray twin = file.readAll();
    const qsizetype start = twin.indexOf('\n') + 1;
    const QByteArray text = twin.sliced(start);
    return twin.first(start) == firstLine(data, text) ? text : QByteArray();
}
