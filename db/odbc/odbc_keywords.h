#pragma once

#include <QString>

/// What a keyword of an OLE DB string means here.
enum class OdbcItem {
    Server,
    Database,
    User,
    Password,
    Trusted,
    Encrypt,
    TrustCertificate,
    CertificateHost,
    LoginTimeout,
    Application,
    Workstation,
    PacketSize,
    Language,
    AttachFile,
    Mars,
    Intent,
    ServerSpn,
    Failover,
    MultiSubnet,
    NetworkLibrary,
    Provider,
    NoEffect, ///< governs a layer that is not there: text conversion, prepared statements, prompts
    Unknown,
};

/// The meaning of a keyword, of the provider's long or short form; ASCII case ignored.
OdbcItem odbcItem(QStringView keyword);
