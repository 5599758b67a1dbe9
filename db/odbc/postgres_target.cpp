#include "db/odbc/postgres_target.h"

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Keyword {
    QStringView name;
    QStringView written; ///< the driver's; empty: read here, or without effect
};

constexpr std::array keywords = {
    Keyword{u"Provider", {}},
    Keyword{u"Server", u"Server"},
    Keyword{u"Data Source", u"Server"},
    Keyword{u"Host", u"Server"},
    Keyword{u"Port", u"Port"},
    Keyword{u"Database", u"Database"},
    Keyword{u"Initial Catalog", u"Database"},
    Keyword{u"Location", u"Database"},
    Keyword{u"User ID", u"UID"},
    Keyword{u"User", u"UID"},
    Keyword{u"Username", u"UID"},
    Keyword{u"UID", u"UID"},
    Keyword{u"Password", u"PWD"},
    Keyword{u"PWD", u"PWD"},
    Keyword{u"SSL Mode", u"SSLmode"},
    Keyword{u"SSLMode", u"SSLmode"},
    Keyword{u"Use Encryption for Data", u"Encrypt"},
    Keyword{u"Encrypt", u"Encrypt"},
    Keyword{u"Connect Timeout", u"Timeout"},
    Keyword{u"Connection Timeout", u"Timeout"},
    Keyword{u"Timeout", u"Timeout"},
    Keyword{u"Persist Security Info", {}},
    Keyword{u"Extended Properties", {}},
};

/// Texts as they are; no savepoint around each statement, since a transaction ends with the first that fails;
/// a dead line is found within two minutes.
constexpr QStringView fixedOptions =
    u"BoolsAsChar=0;CommLog=0;LFConversion=0;Protocol=7.4-1;"
    u"pqopt={keepalives_idle=30 keepalives_interval=10 keepalives_count=6 tcp_user_timeout=90000};";

constexpr int defaultPort = 5432;

QString driverAmong(const QStringList &installed) {
    for (const QString &driver : {u"PostgreSQL Unicode(x64)"_s, u"PostgreSQL Unicode"_s})
        if (installed.contains(driver))
            return driver;
    return {};
}

class Mapper {
public:
    Mapper(const ConnectionString &source, const QStringList &installed) : m_source(source) {
        m_target.driver = driverAmong(installed);
        m_target.server = last(u"Server");
        m_target.password = last(u"PWD");
    }

    OdbcTarget run() {
        if (m_target.driver.isEmpty())
            fail(u"PostgreSQL 用の ODBC ドライバーがありません。Debian では odbc-postgresql、Windows では "
                 u"psqlODBC をインストールしてください。"_s);
        else if (keywordsKnown() && valuesRight())
            write();
        return m_target;
    }

private:
    bool fail(const QString &what) {
        m_target.reason = m_target.server.isEmpty() ? what : what + u"（%1）"_s.arg(m_target.name());
        return false;
    }

    bool badValue(const QString &keyword) {
        return fail(u"接続文字列の項目「%1」の値が正しくありません。"_s.arg(keyword));
    }

    /// The last value of what the driver calls so.
    QString last(QStringView written) const {
        QString value;
        for (const ConnectionItem &item : m_source.items())
            for (const Keyword &keyword : keywords)
                if (keyword.written == written && sameKeyword(keyword.name, item.keyword))
                    value = item.value;
        return value;
    }

    bool keywordsKnown() {
        for (const ConnectionItem &item : m_source.items())
            if (std::ranges::none_of(
                    keywords, [&](const Keyword &known) { return sameKeyword(known.name, item.keyword); }))
                // It may be the tail of a password with a semicolon, so it is not repeated.
                return fail(
                    u"接続文字列の%1文字目からの項目は不明です。「;」を含む値は引用符で囲んでください。"_s
                        .arg(item.at));
        return true;
    }

    bool valuesRight() {
        if (m_target.server.isEmpty())
            return fail(u"接続文字列にサーバー（Server）がありません。"_s);
        if (last(u"Database").isEmpty())
            return fail(u"接続文字列にデータベース（Database）がありません。"_s);
        bool isNumber = true;
        if (const QString port = last(u"Port"); !port.isEmpty())
            m_port = port.toInt(&isNumber);
        if (!isNumber || m_port < 1 || m_port > 65535)
            return badValue(u"Port"_s);
        if (const QString seconds = last(u"Timeout"); !seconds.isEmpty()) {
            const int limit = seconds.toInt(&isNumber);
            if (!isNumber || limit < 0)
                return badValue(u"Connect Timeout"_s);
            if (limit > 0)
                m_target.loginSeconds = std::min(limit, OdbcTarget::maxLoginSeconds);
        }
        return true;
    }

    void write() {
        const QString encrypt = last(u"Encrypt").toLower();
        const bool encrypted = encrypt == u"true" || encrypt == u"yes" || encrypt == u"1";
        const QString ssl = last(u"SSLmode");
        QString &text = m_target.connectionString;
        const auto item = [&](QStringView keyword, const QString &value) {
            if (!value.isEmpty())
                text += keyword.toString() + u'=' + odbcQuoted(value) + u';';
        };
        item(u"Driver", m_target.driver);
        item(u"Server", m_target.server);
        item(u"Port", QString::number(m_port));
        for (const QStringView keyword : {u"Database", u"UID", u"PWD"})
            item(keyword, last(keyword));
        item(u"SSLmode", !ssl.isEmpty() ? ssl : encrypted ? u"require"_s : u"prefer"_s);
        text += fixedOptions;
    }

    const ConnectionString &m_source;
    OdbcTarget m_target;
    int m_port = defaultPort;
};

} // namespace

bool asksForPostgres(const ConnectionString &source) {
    QString provider = source.value(u"Provider");
    if (provider.endsWith(u".1"))
        provider.chop(2);
    constexpr std::array<QStringView, 3> names = {u"PostgreSQL", u"PostgreSQL OLE DB Provider", u"PGNP"};
    return std::ranges::any_of(names, [&](QStringView name) { return sameKeyword(name, provider); });
}

OdbcTarget postgresTarget(const ConnectionString &source, const QStringList &installed) {
    return Mapper(source, installed).run();
}
