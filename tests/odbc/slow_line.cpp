#include "tests/odbc/slow_line.h"

#include <algorithm>
#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

sockaddr_in loopback(quint16 port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

int withoutDelay(int socket) {
    const int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return socket;
}

} // namespace

SlowLine::SlowLine(quint16 serverPort, std::chrono::milliseconds roundTrip)
    : m_serverPort(serverPort),
      m_oneWay(roundTrip / 2),
      m_listening(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    auto *where = reinterpret_cast<sockaddr *>(&address);
    if (::bind(m_listening, where, size) == 0 && ::listen(m_listening, 16) == 0 &&
        ::getsockname(m_listening, where, &size) == 0)
        m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { run(); });
}

SlowLine::~SlowLine() {
    m_ended = true;
    m_thread.join();
    ::close(m_listening);
    for (const Connection &connection : m_connections) {
        ::close(connection.there.from);
        ::close(connection.there.to);
    }
}

void SlowLine::accept() {
    const int program = withoutDelay(::accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC));
    const int server = withoutDelay(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address = loopback(m_serverPort);
    if (::connect(server, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0) {
        m_connections.push_back({{program, server}, {server, program}});
        return;
    }
    ::close(program);
    ::close(server);
}

/// False at the end of the connection.
bool SlowLine::take(Way &way) {
    std::vector<char> bytes(size_t{64} * 1024);
    const ssize_t count = ::read(way.from, bytes.data(), bytes.size());
    if (count <= 0)
        return false;
    bytes.resize(size_t(count));
    way.underWay.push_back({Clock::now() + m_oneWay, std::move(bytes)});
    return true;
}

bool SlowLine::deliver(Way &way) {
    for (; !way.underWay.empty() && way.underWay.front().due <= Clock::now(); way.underWay.pop_front()) {
        const std::vector<char> &bytes = way.underWay.front().bytes;
        for (size_t sent = 0; sent < bytes.size();) {
            const ssize_t count = ::send(way.to, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0)
                return false;
            sent += size_t(count);
        }
    }
    return true;
}

bool SlowLine::serve(Connection &connection, bool programSpoke, bool serverSpoke) {
    if (programSpoke && std::exchange(connection.answered, false))
        ++m_roundTrips;
    if (serverSpoke)
        connection.answered = true;
    return (!programSpoke || take(connection.there)) && (!serverSpoke || take(connection.back)) &&
           deliver(connection.there) && deliver(connection.back);
}

/// Until the next packet is due, or something may have changed.
int SlowLine::millisecondsLeft() const {
    Clock::duration left = std::chrono::milliseconds(50);
    for (const Connection &connection : m_connections)
        for (const Way *way : {&connection.there, &connection.back})
            if (!way->underWay.empty())
                left = std::min(left, way->underWay.front().due - Clock::now());
    return int(std::max<qint64>(0, std::chrono::ceil<std::chrono::milliseconds>(left).count()));
}

void SlowLine::run() {
    while (!m_ended) {
        std::vector<pollfd> waiting{{m_listening, POLLIN, 0}};
        for (const Connection &connection : m_connections)
            waiting.insert(waiting.end(),
                           {{connection.there.from, POLLIN, 0}, {connection.back.from, POLLIN, 0}});
        ::poll(waiting.data(), waiting.size(), millisecondsLeft());
        size_t next = 1;
        for (auto connection = m_connections.begin(); connection != m_connections.end(); next += 2) {
            if (serve(*connection, waiting[next].revents != 0, waiting[next + 1].revents != 0)) {
                ++connection;
                continue;
            }
            ::close(connection->there.from);
            ::close(connection->there.to);
            connection = m_connections.erase(connection);
        }
        if (waiting.front().revents != 0)
            accept();
    }
}
