#pragma once

#include <QtGlobal>
#include <atomic>
#include <chrono>
#include <deque>
#include <list>
#include <thread>
#include <vector>

/// A line to a server of this machine on which every way takes its time, as from a branch to the head office:
/// connect to its port instead of the server's.
class SlowLine {
public:
    /// @param roundTrip to the server and back
    SlowLine(quint16 serverPort, std::chrono::milliseconds roundTrip);
    ~SlowLine();
    SlowLine(const SlowLine &) = delete;
    SlowLine &operator=(const SlowLine &) = delete;

    quint16 port() const { return m_port; }
    /// How often the program has asked something after the server had answered what was asked before.
    int roundTrips() const { return m_roundTrips; }

private:
    using Clock = std::chrono::steady_clock;
    struct Packet {
        Clock::time_point due;
        std::vector<char> bytes;
    };
    /// One way of a connection.
    struct Way {
        int from, to;
        std::deque<Packet> underWay = {};
    };
    struct Connection {
        Way there, back;
        bool answered = true; ///< the last that came, came from the server
    };

    void run();
    void accept();
    bool take(Way &way);
    bool deliver(Way &way);
    bool serve(Connection &connection, bool programSpoke, bool serverSpoke);
    int millisecondsLeft() const;

    quint16 m_serverPort;
    std::chrono::milliseconds m_oneWay;
    int m_listening = -1;
    quint16 m_port = 0;
    std::list<Connection> m_connections;
    std::atomic<int> m_roundTrips = 0;
    std::atomic<bool> m_ended = false;
    std::thread m_thread;
};
