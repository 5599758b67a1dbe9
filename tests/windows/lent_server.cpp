// Programs for Windows find a server that runs on this machine, and that lend_server started for them.

#include "tests/odbc/postgres_server.h"

PostgresServer::PostgresServer() : m_port(quint16(qEnvironmentVariableIntValue("DOUISHO_TEST_PORT"))) {
    if (m_port == 0)
        m_problem = QStringLiteral("no server is lent to this test");
}

PostgresServer::~PostgresServer() = default;
