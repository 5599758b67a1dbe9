#pragma once

#include "app/base/result.h"
#include "db/adodb.h"

#include <QString>

/// The version of the log's tables that this program knows.
constexpr int logVersion = 1;

/// Makes the tables of the log, all of them or none, in a transaction of its own.
/// @return false when they are there already, also when another PC makes them at the same moment
Result<bool> makeLogTables(cT_ADODB &db);

/// The statements that make them in the language of the server, for its administrator.
QString logTablesScript(SqlDialect dialect);

/// Whether the database keeps history, looked at now; the connection remembers it. Makes nothing. Not inside
/// a transaction: what cannot be done would end it.
const HistoryState &lookAtLog(cT_ADODB &db);

/// The same, looked at once a connection, and the tables made where they are missing and the account may.
/// Before a transaction, never in it.
const HistoryState &settleLog(cT_ADODB &db);

/// What it says to the user, with what to do.
QString historyStateText(const HistoryState &state);

/// The user may be told, once, that no history is kept: why, or nothing where it is, where nobody knows yet,
/// and where he has been told.
QString untoldHistoryState(cT_ADODB &db);
