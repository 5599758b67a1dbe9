#include "app/base/siblings.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/processes.h"

using namespace Qt::Literals::StringLiterals;

bool startSibling(Environment &environment, const QString &fileName, const QStringList &arguments) {
    const QString &folder = environment.folders.program();
    if (environment.processes.start(Folders::file(folder, fileName), arguments, folder))
        return true;
    environment.messages.fail(u"実行ファイルが見つかりません。"_s, u"実行ファイルエラー！"_s);
    return false;
}
