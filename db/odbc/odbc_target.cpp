#include "db/odbc/odbc_target.h"

#include "db/odbc/odbc_keywords.h"
#include "db/odbc/postgres_target.h"

#include <algorithm>
#include <map>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isOneOf(QStringView text, std::initializer_list<QStringView> words) {
    return std::any_of(words.begin(), words.end(), [&](QStringView word) { return sameKeyword(text, word); });
}

/// A flag's value, an absent one is off; `on` and `off` are the words that this flag knows besides.
std::optional<bool> flag(QStringView text, std::initializer_list<QStringView> on = {},
                         std::initializer_list<QStringView> off = {}) {
    if (isOneOf(text, {u"True", u"Yes", u"1"}) || isOneOf(text, on))
        return true;
    if (isOneOf(text, {u"", u"False", u"No", u"0"}) || isOneOf(text, off))
        return false;
    return std::nullopt;
}

std::optional<bool> encryptionFlag(QStringView text) {
    return flag(text, {u"Mandatory", u"Strict"}, {u"Optional"});
}

/// "tcp:host\instance,port" taken apart.
struct ServerAddress {
    QString protocol;
    QString host;
    QString instance;
    QString port;
};

ServerAddress serverAddress(const QString &text) {
    ServerAddress address;
    QString rest = text;
    for (const QString &protocol : {u"tcp"_s, u"np"_s, u"lpc"_s, u"admin"_s})
        if (sameKeyword(QStringView(rest).left(protocol.size() + 1), protocol + u':')) {
            address.protocol = protocol;
            rest = rest.mid(protocol.size() + 1).trimmed();
            break;
        }
    if (const qsizetype comma = rest.indexOf(u','); comma >= 0) {
        address.port = rest.mid(comma + 1).trimmed();
        rest = rest.left(comma).trimmed();
    }
    if (const qsizetype slash = rest.indexOf(u'\\'); slash >= 0) {
        address.instance = rest.mid(slash + 1);
        rest = rest.left(slash);
    }
    address.host = isOneOf(rest, {u"", u".", u"(local)"}) ? u"localhost"_s : rest;
    return address;
}

/// Left to choose a version, FreeTDS tries one after the other, for ever with a server that says nothing and
/// ever deeper in its stack. Every server settles for less than this one.
constexpr QStringView versionKeyword = u"TDS_Version";
constexpr QStringView version = u"7.4";

bool isFreeTds(const QString &driver) {
    return driver.contains(u"FreeTDS", Qt::CaseInsensitive) ||
           driver.contains(u"tdsodbc", Qt::CaseInsensitive);
}

class Mapper {
public:
    Mapper(const ConnectionString &source, const QString &driver)
        : m_source(source), m_freeTds(isFreeTds(driver)) {
        m_target.driver = driver;
    }

    OdbcTarget run() {
        if (collect() && knownProvider() && driverInstalled()) {
            write(u"Driver"_s, m_target.driver);
            if (addServer() && addLogin() && addOptions()) {
                if (m_freeTds) {
                    write(versionKeyword.toString(), version.toString());
                    write(u"ClientCharset"_s, u"UTF-8"_s);
                }
                m_target.connectionString = m_written;
            }
        }
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

    /// Sorts the items by meaning; the last one of a meaning counts.
    bool collect() {
        const ConnectionItem *previous = nullptr;
        const ConnectionItem *stranger = nullptr;
        bool afterPassword = false;
        for (const ConnectionItem &item : m_source.items()) {
            const OdbcItem meaning = odbcItem(item.keyword);
            if (meaning == OdbcItem::Unknown && !stranger) {
                stranger = &item;
                afterPassword = previous && odbcItem(previous->keyword) == OdbcItem::Password;
            }
            if (meaning != OdbcItem::Provider)
                m_items[meaning] = item;
            previous = &item;
        }
        m_target.server = value(OdbcItem::Server);
        m_target.password = value(OdbcItem::Password);
        if (!stranger)
            return true;
        if (afterPassword) // The "keyword" may be the tail of the password.
            return fail(
                u"接続文字列の%1文字目からの項目は不明です。「;」を含むパスワードは引用符で囲んでください。"_s
                    .arg(stranger->at));
        return fail(u"接続文字列に不明な項目「%1」があります。"_s.arg(stranger->keyword));
    }

    bool knownProvider() {
        QString provider = m_source.value(u"Provider");
        if (provider.endsWith(u".1"))
            provider.chop(2);
        if (isOneOf(provider, {u"", u"SQLOLEDB", u"SQLNCLI", u"SQLNCLI10", u"SQLNCLI11", u"MSOLEDBSQL",
                               u"MSOLEDBSQL19"}))
            return true;
        return fail(u"接続文字列のプロバイダー「%1」には対応していません。SQL Server "
                    u"のプロバイダー、PostgreSQL か SQLite、"
                    u"または Driver= か DSN= を指定してください。"_s.arg(provider));
    }

    bool driverInstalled() {
        return !m_target.driver.isEmpty() || fail(u"SQL Server 用の ODBC ドライバーがありません。"_s);
    }

    QString value(OdbcItem item) const {
        const auto found = m_items.find(item);
        return found == m_items.end() ? QString() : found->second.value;
    }

    QString keyword(OdbcItem item) const { return m_items.at(item).keyword; }

    void write(const QString &name, const QString &text) {
        if (!text.isEmpty())
            m_written += name + u'=' + odbcQuoted(text) + u';';
    }

    void copy(OdbcItem item, const QString &name) { write(name, value(item)); }

    /// Writes a flag that was given; false when its value is none.
    bool copyFlag(OdbcItem item, const QString &name) {
        if (!m_items.contains(item))
            return true;
        const std::optional<bool> on = flag(value(item));
        if (!on)
            return badValue(keyword(item));
        if (!name.isEmpty())
            write(name, *on ? u"Yes"_s : u"No"_s);
        return true;
    }

    bool addServer() {
        if (m_target.server.isEmpty())
            return fail(u"接続文字列にサーバー（Data Source）がありません。"_s);
        ServerAddress address = serverAddress(m_target.server);
        bool portOk = true;
        const int port = address.port.toInt(&portOk);
        if (!address.port.isEmpty() && (!portOk || port < 1 || port > 65535))
            return badValue(keyword(OdbcItem::Server));
        if (!addNetworkLibrary(address))
            return false;
        if (!m_freeTds) {
            const bool prefixed =
                serverAddress(m_target.server).protocol.isEmpty() && !address.protocol.isEmpty();
            write(u"Server"_s, prefixed ? address.protocol + u':' + m_target.server : m_target.server);
            return true;
        }
        // FreeTDS speaks TCP only. A port makes the look-up of the instance's own needless.
        if (!address.port.isEmpty() || address.instance.isEmpty()) {
            write(u"Server"_s, address.host);
            write(u"Port"_s, address.port.isEmpty() ? u"1433"_s : address.port);
        } else {
            write(u"Server"_s, address.host + u'\\' + address.instance);
        }
        return true;
    }

    bool addNetworkLibrary(ServerAddress &address) {
        const struct {
            QStringView library;
            QString protocol;
        } libraries[] = {{u"DBMSSOCN", u"tcp"_s}, {u"DBNMPNTW", u"np"_s}, {u"DBMSLPCN", u"lpc"_s}};
        const QString library = value(OdbcItem::NetworkLibrary);
        if (library.isEmpty())
            return true;
        for (const auto &known : libraries)
            if (sameKeyword(known.library, library)) {
                if (address.protocol.isEmpty())
                    address.protocol = known.protocol;
                return true;
            }
        return badValue(keyword(OdbcItem::NetworkLibrary));
    }

    bool addLogin() {
        copy(OdbcItem::Database, u"Database"_s);
        const std::optional<bool> trusted = flag(value(OdbcItem::Trusted), {u"SSPI"});
        if (!trusted)
            return badValue(keyword(OdbcItem::Trusted));
        if (*trusted) { // The system's own log-in; a user beside it is ignored, as OLE DB does.
            write(u"Trusted_Connection"_s, u"Yes"_s);
        } else {
            copy(OdbcItem::User, u"UID"_s);
            copy(OdbcItem::Password, u"PWD"_s);
        }
        return addLoginTimeout();
    }

    bool addLoginTimeout() {
        const QString text = value(OdbcItem::LoginTimeout);
        if (text.isEmpty())
            return true;
        bool ok = false;
        const int seconds = text.toInt(&ok);
        if (!ok || seconds < 0)
            return badValue(keyword(OdbcItem::LoginTimeout));
        if (seconds > 0) // 0 asks to wait for ever, which would freeze the window.
            m_target.loginSeconds = std::min(seconds, OdbcTarget::maxLoginSeconds);
        return true;
    }

    bool addOptions() {
        copy(OdbcItem::Application, u"APP"_s);
        copy(OdbcItem::Workstation, u"WSID"_s);
        copy(OdbcItem::Language, u"Language"_s);
        copy(OdbcItem::AttachFile, u"AttachDbFilename"_s);
        copy(OdbcItem::ServerSpn, u"ServerSPN"_s);
        if (value(OdbcItem::Intent).compare(u"ReadOnly", Qt::CaseInsensitive) == 0)
            write(u"ApplicationIntent"_s, u"ReadOnly"_s);
        return copyFlag(OdbcItem::Mars, u"MARS_Connection"_s) &&
               (m_freeTds ? addFreeTdsOptions() : addMicrosoftOptions());
    }

    bool addFreeTdsOptions() {
        bool ok = true;
        const QString packet = value(OdbcItem::PacketSize);
        if (packet.toInt(&ok); !packet.isEmpty() && !ok)
            return badValue(keyword(OdbcItem::PacketSize));
        copy(OdbcItem::PacketSize, u"PacketSize"_s);
        const std::optional<bool> encrypt = encryptionFlag(value(OdbcItem::Encrypt));
        if (!encrypt)
            return badValue(keyword(OdbcItem::Encrypt));
        // Its own default encrypts the log-in alone, as OLE DB without "Use Encryption for Data".
        if (*encrypt)
            write(u"Encryption"_s, u"require"_s);
        // Which certificates are trusted stands in freetds.conf.
        return copyFlag(OdbcItem::TrustCertificate, {}) && copyFlag(OdbcItem::MultiSubnet, {});
    }

    bool addMicrosoftOptions() {
        const std::optional<bool> encrypt = encryptionFlag(value(OdbcItem::Encrypt));
        if (!encrypt)
            return badValue(keyword(OdbcItem::Encrypt));
        // Always written: newer drivers encrypt unless told not to, OLE DB does not.
        const bool strict = sameKeyword(value(OdbcItem::Encrypt), u"Strict");
        write(u"Encrypt"_s, strict ? u"strict"_s : *encrypt ? u"Yes"_s : u"No"_s);
        copy(OdbcItem::CertificateHost, u"HostNameInCertificate"_s);
        copy(OdbcItem::Failover, u"Failover_Partner"_s);
        return copyFlag(OdbcItem::TrustCertificate, u"TrustServerCertificate"_s) &&
               copyFlag(OdbcItem::MultiSubnet, u"MultiSubnetFailover"_s);
    }

    const ConnectionString &m_source;
    bool m_freeTds;
    std::map<OdbcItem, ConnectionItem> m_items;
    QString m_written;
    OdbcTarget m_target;
};

OdbcTarget passedAsItIs(const ConnectionString &source) {
    OdbcTarget target;
    target.connectionString = source.text();
    target.driver = source.value(u"Driver");
    if (isFreeTds(target.driver) && source.value(versionKeyword).isNull()) {
        if (!target.connectionString.endsWith(u';'))
            target.connectionString += u';';
        target.connectionString += u"%1=%2;"_s.arg(versionKeyword, version);
    }
    target.password = source.value(u"PWD");
    if (target.password.isNull())
        target.password = source.value(u"Password");
    for (QStringView keyword : {u"Server", u"Servername", u"DSN", u"FileDSN"})
        if (target.server.isEmpty())
            target.server = source.value(keyword);
    return target;
}

} // namespace

QString OdbcTarget::name() const {
    if (driver.isEmpty())
        return u"サーバー「%1」"_s.arg(server);
    return u"サーバー「%1」、ODBC ドライバー「%2」"_s.arg(server, driver);
}

QString odbcQuoted(const QString &value) {
    const bool plain =
        std::none_of(value.begin(), value.end(), [](QChar c) { return u"[]{}(),;?*=!@ \t"_s.contains(c); });
    if (plain)
        return value;
    return u'{' + QString(value).replace(u'}', u"}}"_s) + u'}';
}

QString sqlServerDriver(const QStringList &installed) {
    const QStringList wanted = {u"FreeTDS"_s,
                                u"ODBC Driver 18 for SQL Server"_s,
                                u"ODBC Driver 17 for SQL Server"_s,
                                u"ODBC Driver 13 for SQL Server"_s,
                                u"ODBC Driver 11 for SQL Server"_s,
                                u"SQL Server Native Client 11.0"_s,
                                u"SQL Server"_s};
    for (const QString &driver : wanted)
        if (installed.contains(driver))
            return driver;
    return {};
}

OdbcTarget odbcTarget(const ConnectionString &source, const QStringList &installed) {
    if (!source.isValid()) {
        OdbcTarget target = passedAsItIs(source);
        target.connectionString.clear();
        if (target.server.isEmpty())
            target.server = source.value(u"Data Source");
        target.reason = source.reason();
        if (!target.server.isEmpty())
            target.reason += u"（%1）"_s.arg(target.name());
        return target;
    }
    if (source.kind() == ConnectionString::Kind::Odbc)
        return passedAsItIs(source);
    if (asksForPostgres(source))
        return postgresTarget(source, installed);
    return Mapper(source, sqlServerDriver(installed)).run();
}
