#include "tests/odbc/postgres_server.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <arpa/inet.h>
#include <csignal>
#include <fcntl.h>
#include <grp.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Newest of the folders that Debian puts a server's version into, or the one on the PATH.
QString findPrograms() {
    const QString base = u"/usr/lib/postgresql"_s;
    const QStringList versions = QDir(base).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (auto version = versions.rbegin(); version != versions.rend(); ++version)
        if (QFile::exists(base + u'/' + *version + u"/bin/initdb"_s))
            return base + u'/' + *version + u"/bin"_s;
    const QString initdb = QStandardPaths::findExecutable(u"initdb"_s);
    return initdb.isEmpty() ? QString() : QFileInfo(initdb).absolutePath();
}

sockaddr_in loopback(quint16 port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

/// The server writes its state into the eighth line of this file; its port answers earlier.
bool saysReady(const QString &pidFile) {
    QFile file(pidFile);
    return file.open(QIODevice::ReadOnly) && file.readAll().split('\n').value(7).startsWith("ready");
}

/// In a child process: becomes the unprivileged user, and ends with the parent.
void becomeServerUser(uid_t user, gid_t group, int signalWithParent) {
    if (::getuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setgid(group) != 0 || ::setuid(user) != 0))
        ::_exit(126);
    // Behind setuid, which forgets it.
    ::prctl(PR_SET_PDEATHSIG, signalWithParent);
}

} // namespace

quint16 freePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    auto *where = reinterpret_cast<sockaddr *>(&address);
    const bool found = ::bind(socket, where, size) == 0 && ::getsockname(socket, where, &size) == 0;
    ::close(socket);
    return found ? ntohs(address.sin_port) : quint16(0);
}

QString odbcDriverLibrary(const QString &fileName) {
    for (const QString &folder : {u"/usr/lib"_s, u"/usr/local/lib"_s, u"/usr/lib64"_s}) {
        QStringList folders = {folder, folder + u"/odbc"_s};
        for (const QString &architecture : QDir(folder).entryList({u"*-linux-*"_s}, QDir::Dirs))
            folders.append(folder + u'/' + architecture + u"/odbc"_s);
        for (const QString &candidate : folders)
            if (QFile::exists(candidate + u'/' + fileName))
                return candidate + u'/' + fileName;
    }
    return {};
}

PostgresServer::PostgresServer() {
    if (prepare() && initialise())
        start();
}

PostgresServer::~PostgresServer() {
    kill();
}

bool PostgresServer::failWith(const QString &problem) {
    m_problem = problem;
    return false;
}

bool PostgresServer::prepare() {
    m_programs = findPrograms();
    m_driver = odbcDriverLibrary(u"psqlodbcw.so"_s);
    if (m_programs.isEmpty() || m_driver.isEmpty())
        return failWith(u"PostgreSQL or its ODBC driver is not installed"_s);
    m_user = ::getuid();
    m_group = ::getgid();
    if (m_user == 0) {
        const passwd *account = ::getpwnam("postgres");
        if (!account)
            account = ::getpwnam("nobody");
        if (!account)
            return failWith(u"no unprivileged user to run the server as"_s);
        m_user = account->pw_uid;
        m_group = account->pw_gid;
    }
    const QByteArray folder = QFile::encodeName(m_folder.path());
    if (!m_folder.isValid() || ::chown(folder.constData(), m_user, m_group) != 0)
        return failWith(u"no folder for the server's data"_s);
    return true;
}

bool PostgresServer::initialise() {
    QFile password(path(u"password"_s));
    if (!password.open(QIODevice::WriteOnly) || password.write(rightPassword) < 0)
        return failWith(password.errorString());
    password.close();
    password.setPermissions(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    QProcess initdb;
    initdb.setChildProcessModifier(
        [user = m_user, group = m_group] { becomeServerUser(user, group, SIGKILL); });
    initdb.setWorkingDirectory(m_folder.path());
    initdb.start(m_programs + u"/initdb"_s,
                 {u"--pgdata"_s, path(u"data"_s), u"--username"_s, u"douisho"_s, u"--encoding"_s, u"UTF8"_s,
                  u"--locale"_s, u"C"_s, u"--auth"_s, u"scram-sha-256"_s, u"--pwfile"_s, password.fileName(),
                  u"--no-sync"_s});
    if (!initdb.waitForFinished(60000) || initdb.exitCode() != 0)
        return failWith(u"initdb: "_s + QString::fromLocal8Bit(initdb.readAllStandardError()));
    return true;
}

bool PostgresServer::start() {
    if (m_port == 0)
        m_port = freePort();
    const QByteArray program = QFile::encodeName(m_programs + u"/postgres"_s);
    const QByteArray data = QFile::encodeName(path(u"data"_s));
    const QByteArray log = QFile::encodeName(path(u"data/server.log"_s));
    const QByteArray port = QByteArray::number(m_port);
    const QString pidFile = path(u"data/postmaster.pid"_s);
    QFile::remove(pidFile);
    m_process = ::fork();
    if (m_process == 0) {
        // SIGQUIT makes the server and all its children end at once.
        becomeServerUser(m_user, m_group, SIGQUIT);
        const int output = ::open(log.constData(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        ::dup2(output, 1);
        ::dup2(output, 2);
        // The server finds its files from its own name, and looks along PATH when that is no path.
        ::execl(program.constData(), program.constData(), "-D", data.constData(), "-p", port.constData(),
                "-c", "listen_addresses=127.0.0.1", "-c", "unix_socket_directories=", "-c", "fsync=off",
                static_cast<char *>(nullptr));
        ::_exit(127);
    }
    for (int tries = 0; m_process > 0 && tries < 600; ++tries) {
        if (saysReady(pidFile))
            return true;
        if (::waitpid(m_process, nullptr, WNOHANG) == m_process) {
            m_process = 0;
            break;
        }
        QThread::msleep(50);
    }
    QFile written(path(u"data/server.log"_s));
    const bool readable = written.open(QIODevice::ReadOnly);
    return failWith(u"the server does not start: "_s +
                    (readable ? QString::fromUtf8(written.readAll()) : QString()));
}

void PostgresServer::kill() {
    if (m_process <= 0)
        return;
    ::kill(m_process, SIGQUIT);
    ::waitpid(m_process, nullptr, 0);
    m_process = 0;
}
