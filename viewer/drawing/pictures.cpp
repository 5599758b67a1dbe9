#include "viewer/drawing/pictures.h"

#include "viewer/document/document.h"

#include <QBuffer>
#include <QImageReader>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int keptKilobytes = 64 << 10;
constexpr qint64 mostPixels = 50'000'000; // a few bytes can unpack to any size

} // namespace

Pictures::Pictures() : m_images(keptKilobytes) {}

Picture Pictures::find(const Report &report, const QString &name) {
    const QString key =
        picturePath(report.folder, name) + u'\n' + QString::number(quintptr(report.pictures.get()), 16);
    if (const QImage *kept = m_images.object(key))
        return {*kept, key};
    const QImage image = read(report, name);
    m_images.insert(key, new QImage(image), int(image.sizeInBytes() / 1024) + 1);
    return {image, key};
}

QImage Pictures::read(const Report &report, const QString &name) {
    const auto fail = [&](const QString &why) {
        const QString sentence = u"画像「%1」%2"_s.arg(name, why);
        if (!m_problems.contains(sentence))
            m_problems.append(sentence);
        return QImage();
    };
    QByteArray bytes = pictureBytes(report, name);
    if (bytes.isEmpty())
        return fail(u"がありません。"_s);
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > mostPixels)
        return fail(u"が大きすぎます（%1×%2ピクセル）。"_s.arg(size.width()).arg(size.height()));
    const QImage image = reader.read();
    return image.isNull() ? fail(u"を読めません。"_s + reader.errorString()) : image;
}
