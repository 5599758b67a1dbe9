#include "print/documents/history.h"

#include "app/base/dates.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "print/documents/lost_texts.h"
#include "print/engine/data_file.h"
#include "print/engine/paper.h"
#include "print/engine/wfd_print_exe.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

DataFile historyFile(const HistoryDocument &document) {
    DataFile file({u"利用者ID"_s, u"利用者名"_s, u"同意年月日"_s, u"加療期間開始"_s, u"加療期間終了"_s,
                   u"同意医師名"_s, u"病院名"_s});
    for (const HistoryDocument::Row &row : document.rows) {
        const DataValue record[] = {qint64(document.patient),
                                    document.name,
                                    dateText(row.consentDay),
                                    dateText(row.period.start),
                                    dateText(row.period.end),
                                    row.doctor,
                                    row.hospital};
        file.add(record);
    }
    return file;
}

} // namespace

Result<bool> printHistory(const Environment &environment, const HistoryDocument &document,
                          HandedDocuments *sent) {
    const QString layout = Folders::file(environment.folders.system(), u"利用者別同意履歴.wfd"_s);
    if (!QFileInfo(layout).isFile())
        return Failure{u"帳票ファイル「%1」がありません。"_s.arg(layout)};
    const DataFile file = historyFile(document);
    const QString title = u"利用者別同意履歴"_s;
    if (!mayLose(environment.messages, replacedNote(environment, file.replaced()), title))
        return false;
    cls_WfdPrintExe engine(environment, sent);
    engine.iInit(layout, title);
    if (engine.iWriteData(1, u"同意履歴データ"_s, file) != 0 || engine.iPreview(paperCodeOf(layout)) != 0)
        return Failure{engine.sErrMsg()};
    return true;
}
