#include "viewer/finished/document_file.h"

#include "app/base/file_write.h"
#include "viewer/finished/document_content.h"

#include <QCryptographicHash>
#include <QFile>
#include <QtEndian>

using namespace Qt::Literals::StringLiterals;

namespace {

// In front of the content: the mark, the format's version, the file's length (big endian, 8 bytes) and the
// content's check sum.
constexpr QByteArrayView mark("douisho\x1A");
constexpr char version = 2;
constexpr qsizetype lengthAt = mark.size() + 1;
constexpr qsizetype sumAt = lengthAt + qsizetype(sizeof(qint64));
constexpr qsizetype sumLength = 20;
constexpr qsizetype contentAt = sumAt + sumLength;

QByteArray sumOf(QByteArrayView content) {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(content);
    return hash.result();
}

/// What is wrong with the outside of a finished document; empty when nothing is.
QString damageOf(QByteArrayView bytes) {
    if (!isDocumentFile(bytes))
        return u"作成済み文書ではありません。"_s;
    if (bytes.size() > mark.size() && bytes[mark.size()] != version)
        return u"新しい形式の作成済み文書です。このプログラムでは読めません。"_s;
    if (bytes.size() < contentAt || documentFileLength(bytes) != bytes.size())
        return u"作成済み文書が途中で切れています。もう一度印刷してください。"_s;
    if (sumOf(bytes.sliced(contentAt)) != bytes.sliced(sumAt, sumLength))
        return u"作成済み文書が壊れています。もう一度印刷してください。"_s;
    return {};
}

} // namespace

bool isDocumentFile(QByteArrayView bytes) {
    return bytes.startsWith(mark);
}

qint64 documentFileLength(QByteArrayView bytes) {
    if (!isDocumentFile(bytes) || bytes.size() < sumAt)
        return 0;
    return qFromBigEndian<qint64>(bytes.data() + lengthAt);
}

std::optional<FinishedDocument> parseDocumentFile(const QByteArray &bytes, const QString &name,
                                                  Problem *problem) {
    *problem = {name, 0, 0, damageOf(bytes)};
    if (!problem->text.isEmpty())
        return std::nullopt;
    return readDocumentContent(bytes.sliced(contentAt), name, problem);
}

std::optional<FinishedDocument> readDocumentFile(const QString &path, Problem *problem) {
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        return parseDocumentFile(file.readAll(), path, problem);
    *problem = {path, 0, 0, u"作成済み文書を開けません。"_s + file.errorString()};
    return std::nullopt;
}

QByteArray documentFileBytes(const FinishedDocument &document) {
    const QByteArray content = documentContent(document);
    QByteArray bytes =
        mark.toByteArray() + version + QByteArray(sizeof(qint64), '\0') + sumOf(content) + content;
    qToBigEndian<qint64>(bytes.size(), bytes.data() + lengthAt);
    return bytes;
}

bool writeDocumentFile(const FinishedDocument &document, const QString &path, Problem *problem) {
    const Result<> written = writeFileWhole(path, documentFileBytes(document), FileUse::Private);
    if (!written)
        *problem = {{}, 0, 0, written.reason()}; // which names the file
    return bool(written);
}
