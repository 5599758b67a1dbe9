// Runs a program that cannot start a server by itself, with one of its own: lend_server PROGRAM ARGUMENT…
// It is told the port in DOUISHO_TEST_PORT.

#include "tests/odbc/postgres_server.h"

#include <QCoreApplication>
#include <QProcess>
#include <cstdio>

int main(int argc, char **argv) {
    const QCoreApplication app(argc, argv);
    const PostgresServer server;
    if (!server.problem().isEmpty()) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(server.problem()));
        return EXIT_FAILURE;
    }
    qputenv("DOUISHO_TEST_PORT", QByteArray::number(server.port()));
    const QStringList arguments = QCoreApplication::arguments();
    return QProcess::execute(arguments.value(1), arguments.mid(2));
}
