#include "db/sqlite/sqlite_errors.h"

#include "db/ado_error.h"

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Meaning {
    QString state;
    QString text; ///< empty: the engine's own says it best
};

Meaning meaningOf(int code, const QString &detail) {
    switch (code & 0xff) {
    case SQLITE_NOTADB:
        return {u"08001"_s, u"データベースファイルではありません。"_s};
    case SQLITE_CORRUPT:
        return {u"HY000"_s, u"データベースファイルが壊れています。"_s};
    case SQLITE_CANTOPEN:
        return {u"08001"_s, u"データベースファイルを開けません。"_s};
    case SQLITE_READONLY:
        return {u"25006"_s, u"データベースファイルに書き込めません（読み取り専用です）。"_s};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {
            u"HYT00"_s,
            u"データベースファイルが他のプログラムで使用中です。しばらく待ってからやり直してください。"_s};
    case SQLITE_INTERRUPT:
        return {u"HYT00"_s, u"時間内に終わらなかったため、処理を中止しました。"_s};
    case SQLITE_FULL:
        return {u"HY000"_s, u"ディスクの空きがなく、データベースファイルに書き込めません。"_s};
    case SQLITE_CONSTRAINT:
        return {u"23000"_s, u"データの決まりに反するため、書き込めません。"_s};
    case SQLITE_IOERR:
        return {u"08S01"_s, u"データベースファイルを読み書きできません。"_s};
    default:
        break;
    }
    if (detail.startsWith(u"no such table"_s))
        return {u"42S02"_s, u"データベースに表がありません。"_s};
    if (detail.startsWith(u"no such column"_s) || detail.contains(u"has no column named"_s))
        return {u"42S22"_s, u"データベースの表に列がありません。"_s};
    return {(code & 0xff) == SQLITE_ERROR ? u"42000"_s : u"HY000"_s, {}};
}

} // namespace

ProviderError sqliteError(int code, const QString &detail, const QString &path) {
    const Meaning meaning = meaningOf(code, detail);
    ProviderError error;
    error.description = meaning.text + detail + u"（"_s + path + u"）"_s;
    error.source = u"SQLite"_s;
    error.sqlState = meaning.state;
    error.nativeError = code;
    error.number = adoErrorNumber(meaning.state);
    return error;
}

ProviderError connectionError(const QString &description) {
    const QString state = u"08001"_s;
    return {adoErrorNumber(state), description, u"SQLite"_s, state, SQLITE_CANTOPEN};
}

bool breaksConnection(int code) {
    return (code & 0xff) == SQLITE_IOERR || (code & 0xff) == SQLITE_NOTADB || code == SQLITE_READONLY_DBMOVED;
}
