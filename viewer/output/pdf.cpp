#include "viewer/output/pdf.h"

#include "viewer/document/document.h"

#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

bool writePdf(const Document &document, const QString &path, const std::function<bool(int, int)> &goOn,
              QString *reason) {
    constexpr int resolution = 1200;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *reason = u"「%1」に書き込めません。"_s.arg(path) + file.errorString();
        return false;
    }
    {
        QPdfWriter writer(&file);
        writer.setResolution(resolution);
        writer.setTitle(document.title());
        QPainter painter;
        for (int page = 0; page < document.pageCount(); ++page) {
            writer.setPageSize(
                QPageSize(document.pageSize(page), QPageSize::Millimeter, {}, QPageSize::ExactMatch));
            writer.setPageMargins({});
            if (page == 0)
                painter.begin(&writer);
            else
                writer.newPage();
            painter.resetTransform();
            painter.scale(resolution / 25.4, resolution / 25.4);
            document.paint(painter, page);
            if (goOn && !goOn(page + 1, document.pageCount()))
                return false;
        }
    }
    return file.commit();
}
