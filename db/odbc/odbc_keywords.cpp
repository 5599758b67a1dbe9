#include "db/odbc/odbc_keywords.h"

#include "db/connection_string.h"

#include <algorithm>
#include <array>

namespace {

struct Keyword {
    QStringView name;
    OdbcItem item;
};

constexpr std::array keywords = {
    Keyword{u"Provider", OdbcItem::Provider},
    Keyword{u"Data Source", OdbcItem::Server},
    Keyword{u"Server", OdbcItem::Server},
    Keyword{u"Network Address", OdbcItem::Server},
    Keyword{u"Address", OdbcItem::Server},
    Keyword{u"Addr", OdbcItem::Server},
    Keyword{u"Initial Catalog", OdbcItem::Database},
    Keyword{u"Database", OdbcItem::Database},
    Keyword{u"User ID", OdbcItem::User},
    Keyword{u"User", OdbcItem::User},
    Keyword{u"UID", OdbcItem::User},
    Keyword{u"Password", OdbcItem::Password},
    Keyword{u"PWD", OdbcItem::Password},
    Keyword{u"Integrated Security", OdbcItem::Trusted},
    Keyword{u"Trusted_Connection", OdbcItem::Trusted},
    Keyword{u"Use Encryption for Data", OdbcItem::Encrypt},
    Keyword{u"Encrypt", OdbcItem::Encrypt},
    Keyword{u"Trust Server Certificate", OdbcItem::TrustCertificate},
    Keyword{u"TrustServerCertificate", OdbcItem::TrustCertificate},
    Keyword{u"Host Name In Certificate", OdbcItem::CertificateHost},
    Keyword{u"HostNameInCertificate", OdbcItem::CertificateHost},
    Keyword{u"Connect Timeout", OdbcItem::LoginTimeout},
    Keyword{u"Connection Timeout", OdbcItem::LoginTimeout},
    Keyword{u"Timeout", OdbcItem::LoginTimeout},
    Keyword{u"Application Name", OdbcItem::Application},
    Keyword{u"APP", OdbcItem::Application},
    Keyword{u"Workstation ID", OdbcItem::Workstation},
    Keyword{u"WSID", OdbcItem::Workstation},
    Keyword{u"Packet Size", OdbcItem::PacketSize},
    Keyword{u"PacketSize", OdbcItem::PacketSize},
    Keyword{u"Current Language", OdbcItem::Language},
    Keyword{u"Language", OdbcItem::Language},
    Keyword{u"Initial File Name", OdbcItem::AttachFile},
    Keyword{u"AttachDBFileName", OdbcItem::AttachFile},
    Keyword{u"MARS Connection", OdbcItem::Mars},
    Keyword{u"MarsConn", OdbcItem::Mars},
    Keyword{u"Application Intent", OdbcItem::Intent},
    Keyword{u"ApplicationIntent", OdbcItem::Intent},
    Keyword{u"Server SPN", OdbcItem::ServerSpn},
    Keyword{u"ServerSPN", OdbcItem::ServerSpn},
    Keyword{u"Failover Partner", OdbcItem::Failover},
    Keyword{u"FailoverPartner", OdbcItem::Failover},
    Keyword{u"MultiSubnetFailover", OdbcItem::MultiSubnet},
    Keyword{u"Network Library", OdbcItem::NetworkLibrary},
    Keyword{u"Network", OdbcItem::NetworkLibrary},
    Keyword{u"Net", OdbcItem::NetworkLibrary},
    Keyword{u"Persist Security Info", OdbcItem::NoEffect},
    Keyword{u"PersistSecurityInfo", OdbcItem::NoEffect},
    Keyword{u"Auto Translate", OdbcItem::NoEffect},
    Keyword{u"AutoTranslate", OdbcItem::NoEffect},
    Keyword{u"Use Procedure for Prepare", OdbcItem::NoEffect},
    Keyword{u"UseProcForPrepare", OdbcItem::NoEffect},
    Keyword{u"Tag with column collation when possible", OdbcItem::NoEffect},
    Keyword{u"DataTypeCompatibility", OdbcItem::NoEffect},
    Keyword{u"Use FMTONLY", OdbcItem::NoEffect},
    Keyword{u"General Timeout", OdbcItem::NoEffect},
    Keyword{u"Locale Identifier", OdbcItem::NoEffect},
    Keyword{u"Location", OdbcItem::NoEffect},
    Keyword{u"Mode", OdbcItem::NoEffect},
    Keyword{u"Prompt", OdbcItem::NoEffect},
    Keyword{u"Window Handle", OdbcItem::NoEffect},
    Keyword{u"OLE DB Services", OdbcItem::NoEffect},
    Keyword{u"Replication server name connect option", OdbcItem::NoEffect},
};

} // namespace

OdbcItem odbcItem(QStringView keyword) {
    const auto found = std::find_if(keywords.begin(), keywords.end(),
                                    [&](const Keyword &k) { return sameKeyword(k.name, keyword); });
    return found == keywords.end() ? OdbcItem::Unknown : found->item;
}
