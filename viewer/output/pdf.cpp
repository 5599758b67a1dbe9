#include "viewer/output/pdf.h"

#include "viewer/document/document.h"
#include "viewer/output/pdf_page.h"

#include <QDateTime>
#include <QDir>

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

Result<PagesEnd> writePdf(const Document &document, const QString &path, FileUse use,
                          const std::function<bool(int, int)> &goOn) {
    const auto failure = [&](const QString &why) {
        return Failure{u"「%1」に書き込めません。"_s.arg(QDir::toNativeSeparators(path)) + why};
    };
    if (document.pageCount() == 0)
        return failure(u"印刷するページがありません。"_s);
    WholeFile whole(path, use);
    if (const Result<> opened = whole.open(); !opened)
        return Failure{opened.reason()};
    PdfFile file(whole.device());
    if (!writePages(document, file, goOn))
        return PagesEnd::GivenUp;
    if (!file.isSound())
        return failure(whole.device().errorString());
    if (const Result<> committed = whole.commit(); !committed)
        return Failure{committed.reason()};
    return PagesEnd::All;
}
