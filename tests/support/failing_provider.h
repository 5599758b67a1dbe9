#pragma once

#include "history/log_tables.h"
#include "tests/support/wrapped_provider.h"

/// A connection to a real database on which one statement (begin and commit count) fails as a server's
/// would.
class FailingConnection {
public:
    static inline const QString description = WrappedProvider::description;

    /// @param nth the statement that fails, counted from 1 after connecting and looking for the history
    FailingConnection(const QString &connectionString, int nth)
        : db([this](const QString &text) {
              return std::make_unique<WrappedProvider>(makeProvider(text),
                                                       [this](QString &) { return --m_left != 0; });
          }) {
        db.iInit(connectionString);
        db.iConnect();
        settleLog(db);
        m_left = nth;
    }

private:
    int m_left = 0; ///< used by the connection's provider, so it comes first

public:
    cT_ADODB db; ///< connected
};
