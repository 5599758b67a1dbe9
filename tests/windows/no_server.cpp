// Wine's programs find no server of their own.

#include "tests/odbc/postgres_server.h"

PostgresServer::PostgresServer() : m_problem(QStringLiteral("no server on this system")) {}

PostgresServer::~PostgresServer() = default;

QString PostgresServer::connectionString(const QString &, const QString &) const {
    return {};
}
