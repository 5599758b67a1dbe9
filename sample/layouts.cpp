#include "sample/layouts.h"

#include "app/base/file_write.h"

#include <QDirIterator>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace sample {

Result<> writeLayouts(const QDir &folder) {
    QDirIterator layouts(u":/sample/layouts"_s, QDir::Files);
    while (layouts.hasNext()) {
        QFile layout(layouts.next());
        if (!layout.open(QIODevice::ReadOnly))
            return Failure{u"レイアウト「%1」を読み込めません。"_s.arg(layouts.fileName())};
        if (Result<> written = writeFileWhole(folder.filePath(layouts.fileName()), layout.readAll());
            !written)
            return written;
    }
    return {};
}

} // namespace sample
