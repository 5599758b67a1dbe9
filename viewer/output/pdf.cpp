#include "viewer/output/pdf.h"

#include "viewer/document/document.h"
#include "viewer/output/pdf_page.h"

#include <QDateTime>
#include <QDir>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray kids(const std::vector<int> &pages) {
    QByteArray list = "[";
    for (const int page : pages)
        list += pdf::reference(page) + ' ';
    return list + "]";
}

QByteArray information(const QString &title) {
    const QString now = QDateTime::currentDateTimeUtc().toString(u"yyyyMMddHHmmss");
    return "<< /Title " + pdf::text(title) + " /Producer (douisho) /CreationDate (D:" + now.toLatin1() +
           "Z) >>";
}

/// False when the caller gives up.
bool writePages(const Document &document, PdfFile &file, const std::function<bool(int, int)> &goOn) {
    PdfFonts fonts(file);
    PdfPictures pictures(file);
    PdfPage page(fonts, pictures);
    const int tree = file.reserve();
    const int count = document.pageCount();
    std::vector<int> pages;
    pages.reserve(size_t(count));
    for (int i = 0; i < count && file.isSound(); ++i) {
        pages.push_back(page.write(file, document.sheet(i), tree));
        if (goOn && !goOn(i + 1, count))
            return false;
    }
    fonts.write();
    file.write(tree, "<< /Type /Pages /Count " + QByteArray::number(count) + " /Kids " + kids(pages) + " >>");
    const int root = file.add("<< /Type /Catalog /Pages " + pdf::reference(tree) +
                              " /Lang (ja) /ViewerPreferences << /DisplayDocTitle true >> >>");
    file.finish(root, file.add(information(document.title())));
    return true;
}

} // namespace

bool writePdf(const Document &document, const QString &path, const std::function<bool(int, int)> &goOn,
              QString *reason) {
    const auto fail = [&](const QString &why) {
        if (reason)
            *reason = u"「%1」に書き込めません。"_s.arg(QDir::toNativeSeparators(path)) + why;
        return false;
    };
    if (reason)
        reason->clear();
    if (document.pageCount() == 0)
        return fail(u"印刷するページがありません。"_s);
    QSaveFile device(path);
    if (!device.open(QIODevice::WriteOnly))
        return fail(device.errorString());
    PdfFile file(device);
    if (!writePages(document, file, goOn))
        return false;
    // commit() does not notice that the last buffer found no room.
    return file.isSound() && device.flush() && device.commit() ? true : fail(device.errorString());
}
