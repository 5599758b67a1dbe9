#pragma once

#include "db/adodb.h"

#include <QString>
#include <functional>

/// A connection to a real database on which one statement (begin and commit count) fails as a server's
/// would.
class FailingConnection {
public:
    static inline const QString description = QStringLiteral("The disk is full.");

    /// @param nth the statement that fails, counted from 1 after connecting
    FailingConnection(const QString &connectionString, int nth);

private:
    int m_left; ///< used by the connection's provider, so it comes first

public:
    cT_ADODB db; ///< connected
};
