#include "app/base/version.h"

#include "app/base/folders.h"
#include "app/base/ini_file.h"

using namespace Qt::Literals::StringLiterals;

QString programVersion(const Folders &folders) {
    clsOplIniFile ini;
    if (ini.iInit(Folders::file(folders.program(), u"Version.ini"_s)) != 0)
        return ini.sErrMsg();
    const QString version = ini.csGetProfileString(u"Version"_s, u"Version"_s);
    return version.isEmpty() ? u"Version.iniにバージョンの記載がありません。"_s : version;
}
