#pragma once

#include "app/base/request_methods.h"
#include "history/log_entries.h"
#include "history/screens/row_names_query.h"

#include <QStringList>

/// A changed column in the user's words.
struct ChangeLine {
    QString caption;
    QString before;
    QString after;
};

/// What was done to a row in the user's words.
struct ChangeText {
    QString time, pc, operation, batch;
    QString subject; ///< whose row, and which
    QString kind;    ///< 登録, 変更 or 削除
    QString summary; ///< the changes in a line
    std::vector<ChangeLine> lines;
};

/// The codes in entries whose names their texts tell.
RowCodes codesIn(const std::vector<LogEntry> &entries);

std::vector<ChangeText> changeTexts(const std::vector<LogEntry> &entries, const RowNames &names,
                                    const RequestMethods &methods);
