#include "sample/layouts.h"

#include "app/base/file_write.h"

#include <QDirIterator>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace sample {

bool writeLayouts(const QDir &folder, QString *reason) {
    QDirIterator layouts(u":/sample/layouts"_s, QDir::Files);
    while (layouts.hasNext()) {
        QFile layout(layouts.next());
        if (!layout.open(QIODevice::ReadOnly)) {
            *reason = u"レイアウト「%1」を読み込めません。"_s.arg(layouts.fileName());
            return false;
        }
        if (!writeFileWhole(folder.filePath(layouts.fileName()), layout.readAll(), reason))
            return false;
    }
    return true;
}

} // namespace sample
