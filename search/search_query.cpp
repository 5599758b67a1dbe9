#include "search/search_query.h"

#include "db/adodb.h"

using namespace Qt::Literals::StringLiterals;

QString connectForSearch(cT_ADODB &db) {
    const ErrorsSince errors(db);
    if (db.isConnected() || db.iConnect() == 0)
        return {};
    const QString reason = errors.text().trimmed();
    return reason.isEmpty() ? u"接続文字列取得できません。"_s : searchFault(reason, u"iInit() でエラー");
}

QString readForSearch(cT_ADODB &db, const QString &sql, Recordset &rows) {
    const ErrorsSince errors(db);
    if ((db.isConnected() || db.iConnect() == 0) && db.iOpenRecSet(rows, sql, adOpenForwardOnly) == 0)
        return {};
    const QString reason = errors.text().trimmed();
    return reason.isEmpty() ? u"接続文字列取得できません。"_s : reason;
}

QString searchFault(const QString &reason, QStringView label) {
    return reason + u"\r\n"_s + label.toString();
}
