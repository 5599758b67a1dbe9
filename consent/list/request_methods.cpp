#include "consent/list/request_methods.h"

#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "app/base/text.h"

#include <QFileInfo>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

RequestMethods readRequestMethods(const Folders &folders, QString *reason) {
    constexpr int most = 500;
    const QString section = u"依頼方法リスト"_s;
    const QString path = Folders::file(folders.program(), u"DATA\\同意依頼方法list.ini"_s);
    RequestMethods methods;
    if (!QFileInfo::exists(path))
        return methods;
    clsOplIniFile ini;
    if (ini.iInit(path) != 0) {
        if (reason)
            *reason = ini.sErrMsg();
        return methods;
    }
    const int count = std::clamp(int(ini.nGetProfileLong(section, u"NUM"_s)), 0, most);
    for (int i = 1; i <= count; ++i)
        methods.texts.append(
            cutAtNul(ini.csGetProfileString(section, u"LIST%1"_s.arg(i, 3, 10, QLatin1Char('0')))));
    return methods;
}
