#include "db/connection_settings.h"

#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "app/base/text.h"

using namespace Qt::Literals::StringLiterals;

Result<QString> readConnectionString(const Folders &folders) {
    clsOplIniFile ini;
    if (ini.iInit(Folders::file(folders.program(), u"adodb.ini"_s)) != 0)
        return Failure{ini.sErrMsg()};
    if (const Result<> readable = ini.readable(); !readable)
        return Failure{readable.reason()};
    const QString value = trimRight(cutAtNul(ini.csGetProfileString(u"接続情報"_s, u"接続情報"_s)));
    if (value.isEmpty())
        return Failure{u"接続文字列取得できません。"_s};
    return value;
}
