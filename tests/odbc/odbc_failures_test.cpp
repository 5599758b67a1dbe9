#include "db/odbc/odbc_errors.h"
#include "db/odbc/odbc_provider.h"
#include "tests/odbc/postgres_server.h"
#include "tests/support/test_environment.h"

#include <QElapsedTimer>
#include <arpa/inet.h>
#include <future>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Accepts connections and never says a word.
class SilentServer {
public:
    SilentServer() : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto *where = reinterpret_cast<sockaddr *>(&address);
        EXPECT_EQ(::bind(m_socket, where, size), 0);
        EXPECT_EQ(::listen(m_socket, 16), 0);
        EXPECT_EQ(::getsockname(m_socket, where, &size), 0);
        m_port = ntohs(address.sin_port);
    }
    ~SilentServer() { ::close(m_socket); }
    SilentServer(const SilentServer &) = delete;
    SilentServer &operator=(const SilentServer &) = delete;

    QString port() const { return QString::number(m_port); }

private:
    int m_socket;
    quint16 m_port = 0;
};

QString postgresDriver() {
    return odbcDriverLibrary(u"psqlodbcw.so"_s);
}

QString freeTdsDriver() {
    return odbcDriverLibrary(u"libtdsodbc.so"_s);
}

} // namespace

TEST(OdbcFailures, ASilentServerIsGivenUpInTime) {
    const SilentServer silent;
    const struct {
        const char *name;
        QString connectionString;
        qint32 number;
    } cases[] = {
        {"the PostgreSQL driver, which keeps the time itself",
         u"Driver=%1;Server=127.0.0.1;Port=%2;UID=u;PWD=p"_s.arg(postgresDriver(), silent.port()),
         -2147467259},
        {"FreeTDS, which tries one protocol version after the other for ever",
         u"Driver=%1;Server=127.0.0.1;Port=%2;TDS_Version=auto;UID=u;PWD=p"_s.arg(freeTdsDriver(),
                                                                                  silent.port()),
         -2147217871},
        {"FreeTDS with a version, which keeps the time itself",
         u"Driver=%1;Server=127.0.0.1;Port=%2;UID=u;PWD=p"_s.arg(freeTdsDriver(), silent.port()),
         -2147217871},
    };
    struct Outcome {
        bool opened;
        qint64 milliseconds;
        QList<ProviderError> errors;
    };
    // All at once: none of them may hold up another.
    std::vector<std::future<Outcome>> outcomes;
    for (const auto &c : cases)
        outcomes.push_back(std::async(std::launch::async, [&c] {
            OdbcProvider db(std::chrono::seconds(3));
            QElapsedTimer timer;
            timer.start();
            const bool opened = db.open(c.connectionString);
            return Outcome{opened || db.isOpen(), timer.elapsed(), db.errors()};
        }));
    for (size_t i = 0; i < outcomes.size(); ++i) {
        const Outcome outcome = outcomes[i].get();
        const char *name = cases[i].name;
        EXPECT_FALSE(outcome.opened) << name;
        EXPECT_GT(outcome.milliseconds, 1500) << name;
        EXPECT_LT(outcome.milliseconds, 3500) << name;
        ASSERT_FALSE(outcome.errors.isEmpty()) << name;
        const ProviderError &first = outcome.errors.first();
        EXPECT_EQ(first.number, cases[i].number) << name << ": " << first.description.toStdString();
        EXPECT_TRUE(first.description.contains(u"サーバー「127.0.0.1」")) << name;
    }
}

TEST(OdbcFailures, WhatIsNotThereIsNamed) {
    const QString port = QString::number(freePort());
    const struct {
        QString connectionString;
        QString part; ///< of the first error's description
    } cases[] = {
        {u"Driver=%1;Server=127.0.0.1;Port=%2;UID=u;PWD=geheim"_s.arg(freeTdsDriver(), port),
         u"サーバー「127.0.0.1」"_s},
        {u"Driver=%1;Server=no-such-host.invalid;UID=u;PWD=geheim"_s.arg(freeTdsDriver()),
         u"サーバー「no-such-host.invalid」"_s},
        {u"Driver=%1;Server=127.0.0.1;Port=%2;UID=u;PWD=geheim"_s.arg(postgresDriver(), port),
         u"サーバー「127.0.0.1」"_s},
        {u"Driver={SQL Server};Server=srv;PWD=geheim"_s, u"「SQL Server」がこのパソコンにありません"_s},
        {u"DSN=no-such-source;PWD=geheim"_s, u"サーバー「no-such-source」"_s},
        {u"Provider=SQLOLEDB;Data Source=srv;Colour=red;PWD=geheim"_s, u"不明な項目「Colour」"_s},
        {u"Provider=SQLOLEDB;PWD=geheim"_s, u"サーバー（Data Source）がありません"_s},
        {u"geheim"_s, u"「=」がありません"_s},
        {u""_s, u"空です"_s},
    };
    for (const auto &c : cases) {
        OdbcProvider db;
        EXPECT_FALSE(db.open(c.connectionString)) << c.connectionString.toStdString();
        EXPECT_FALSE(db.isOpen());
        ASSERT_FALSE(db.errors().isEmpty()) << c.connectionString.toStdString();
        EXPECT_TRUE(db.errors().first().description.contains(c.part))
            << db.errors().first().description.toStdString();
        for (const ProviderError &error : db.errors()) {
            EXPECT_EQ(error.number, -2147467259);
            EXPECT_FALSE(error.description.contains(u"geheim"));
        }
    }
}

TEST(OdbcErrors, ADeadlockVictimHasNothingLeftToUndo) {
    ProviderError byNumber = odbcError(u"HY000"_s, u"ROLLBACK TRANSACTION"_s);
    byNumber.nativeError = 3903;
    EXPECT_TRUE(saysNothingToUndo({odbcError(u"01000"_s, {}), byNumber}));
    EXPECT_TRUE(saysNothingToUndo({odbcError(u"25000"_s, {})}));
    EXPECT_FALSE(saysNothingToUndo({odbcError(u"08S01"_s, {})}));
}

TEST(OdbcErrors, ThePasswordIsHidden) {
    const struct {
        QString password;
        QString description;
        QString shown;
    } cases[] = {
        {u"Ge(heim"_s, u"PWD=Ge(heim;UID=xGe(heimx"_s, u"PWD=***;UID=x***x"_s},
        {u"sa"_s, u"PWD=sa;user=sa message"_s, u"PWD=***;user=*** message"_s},
        {u""_s, u"nothing"_s, u"nothing"_s},
    };
    for (const auto &c : cases) {
        QList<ProviderError> errors = {odbcError(u"HY000"_s, c.description)};
        hidePassword(errors, c.password);
        EXPECT_EQ(errors.first().description, c.shown);
    }
}
