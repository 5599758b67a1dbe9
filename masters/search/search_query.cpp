#include "masters/search/search_query.h"

#include "db/adodb.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the connection gathered behind its first `before` characters.
QString errorsSince(const cT_ADODB &db, qsizetype before) {
    return db.sErrMsg().mid(before).trimmed();
}

} // namespace

QString connectForSearch(cT_ADODB &db) {
    const qsizetype before = db.sErrMsg().size();
    if (db.isConnected() || db.iConnect() == 0)
        return {};
    const QString reason = errorsSince(db, before);
    return reason.isEmpty() ? u"接続文字列取得できません。"_s : searchFault(reason, u"iInit() でエラー");
}

QString readForSearch(cT_ADODB &db, const QString &sql, Recordset &rows) {
    const qsizetype before = db.sErrMsg().size();
    if ((db.isConnected() || db.iConnect() == 0) && db.iOpenRecSet(rows, sql, adOpenForwardOnly) == 0)
        return {};
    const QString reason = errorsSince(db, before);
    return reason.isEmpty() ? u"接続文字列取得できません。"_s : reason;
}

QString searchFault(const QString &reason, QStringView label) {
    return reason + u"\r\n"_s + label.toString();
}
