#include "history/log_tables.h"

#include "db/dialect/dialect.h"
#include "db/tables/schema.h"
#include "history/log_query.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView firstTable = u"DOUISHO_LOG_INFO";

QString statements() {
    QFile file(u":/history/log_tables.sql"_s);
    const bool opened = file.open(QIODevice::ReadOnly);
    Q_ASSERT(opened);
    return opened ? QString::fromUtf8(file.readAll()) : QString();
}

/// A lost connection, or one that had to give way to others, says nothing of the tables.
HistoryState refused(const cT_ADODB &db, const QString &why) {
    const bool passes = !db.isConnected() || db.wasDeadlocked();
    return {passes ? HistoryState::Unknown : HistoryState::Unfit, why.trimmed()};
}

HistoryState fit(cT_ADODB &db) {
    const Result<Recordset> version = readRows(db, sqlLogVersion());
    if (!version)
        return refused(db, version.reason());
    if (version->number(0, 0) > logVersion)
        return {HistoryState::Newer,
                u"変更履歴の表が、新しい版のプログラムのもの（版 %1）です。"_s.arg(version->number(0, 0))};
    const ErrorsSince errors(db);
    Transaction trial(db); // undone
    QList<qint64> affected;
    if (!trial.begun()) // somebody else is writing, for longer than one waits
        return {HistoryState::Unknown, errors.text().trimmed()};
    return db.iExecSQLs(sqlTryLog(), affected) == 0 ? HistoryState{HistoryState::Kept}
                                                    : refused(db, errors.text());
}

HistoryState look(cT_ADODB &db) {
    const Result<bool> there = hasTable(db, firstTable);
    if (!there)
        return {HistoryState::Unknown, there.reason().trimmed()};
    return *there ? fit(db) : HistoryState{HistoryState::Missing};
}

// Tables that were looked for only may yet be made by whoever writes first.
bool isSettled(const HistoryState &state) {
    const bool untried = state.kind == HistoryState::Missing && state.reason.isEmpty();
    return state.kind != HistoryState::Unknown && !untried;
}

const HistoryState &remembered(cT_ADODB &db, HistoryState state) {
    state.told = db.history().told;
    // Looking again makes nobody try again what the server refused.
    if (state.kind == HistoryState::Missing && state.reason.isEmpty() &&
        db.history().kind == HistoryState::Missing)
        state.reason = db.history().reason;
    return db.history() = std::move(state);
}

} // namespace

Result<bool> makeLogTables(cT_ADODB &db) {
    return makeTables(db, statements(), firstTable);
}

QString logTablesScript(SqlDialect dialect) {
    return inDialect(dialect, statements());
}

const HistoryState &lookAtLog(cT_ADODB &db) {
    return remembered(db, look(db));
}

const HistoryState &settleLog(cT_ADODB &db) {
    if (isSettled(db.history()) || !db.isConnected())
        return db.history();
    if (lookAtLog(db).kind != HistoryState::Missing)
        return db.history();
    const Result<bool> made = makeLogTables(db);
    if (!made)
        return remembered(db, {HistoryState::Missing, made.reason().trimmed()});
    return lookAtLog(db);
}

QString historyStateText(const HistoryState &state) {
    const QString why = state.reason.isEmpty() ? QString() : u"\r\n\r\n"_s + state.reason;
    switch (state.kind) {
    case HistoryState::Kept:
        return u"変更履歴を記録しています。保存・更新・印刷などで書き換えた行は、前後の値とともに残ります。"_s;
    case HistoryState::Missing:
        return u"変更履歴の表がデータベースにないため、記録していません。データはこれまでどおり保存されます。"
               "「表を作成」で作成するか、下の SQL をサーバーの管理者に実行してもらってください。"_s +
               why;
    case HistoryState::Unfit:
        return u"変更履歴の表に書き込めないため、記録していません。データはこれまでどおり保存されます。"
               "サーバーの管理者に、下の SQL の表への SELECT・INSERT・UPDATE の権限を依頼してください。"_s +
               why;
    case HistoryState::Newer:
        return state.reason + u"記録していませんが、データはこれまでどおり保存されます。"
                              "このＰＣのプログラムも新しい版にしてください。"_s;
    case HistoryState::Unknown:
        break;
    }
    return u"変更履歴を記録しているかどうかは、まだ分かりません。"_s + why;
}

QString untoldHistoryState(cT_ADODB &db) {
    HistoryState &state = db.history();
    if (state.told || !isSettled(state) || state.kind == HistoryState::Kept)
        return {};
    state.told = true;
    return u"変更履歴は記録されません（データはこれまでどおり保存されます）。"
           "「設定」の「変更履歴の準備」に、理由と準備のしかたがあります。"_s;
}
