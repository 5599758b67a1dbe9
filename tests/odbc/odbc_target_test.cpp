#include "db/odbc/odbc_target.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList freeTds = {u"FreeTDS"_s};
const QStringList microsoft = {u"ODBC Driver 17 for SQL Server"_s, u"ODBC Driver 18 for SQL Server"_s};

QString mapped(const QString &text, const QStringList &drivers) {
    const OdbcTarget target = odbcTarget(ConnectionString(text), drivers);
    return target.reason.isEmpty() ? target.connectionString : target.reason;
}

} // namespace

TEST(OdbcTarget, AWholeOleDbStringIsMappedForEachDriver) {
    const QString text =
        u"Provider=SQLOLEDB.1;Password=a;Persist Security Info=True;User ID=sa;Initial Catalog=Suite;"
        u"Data Source=SRV\\INST;Use Procedure for Prepare=1;Auto Translate=True;Packet Size=4096;"
        u"Workstation ID=PC-1;Use Encryption for Data=False;"
        u"Tag with column collation when possible=False"_s;
    EXPECT_EQ(mapped(text, freeTds), u"Driver=FreeTDS;Server=SRV\\INST;Database=Suite;UID=sa;PWD=a;WSID=PC-1;"
                                     u"PacketSize=4096;TDS_Version=7.4;ClientCharset=UTF-8;"_s);
    EXPECT_EQ(mapped(text, microsoft),
              u"Driver={ODBC Driver 18 for SQL Server};Server=SRV\\INST;Database=Suite;UID=sa;"
              u"PWD=a;WSID=PC-1;Encrypt=No;"_s);
}

TEST(OdbcTarget, EveryKeywordIsMappedOrLeftOutOnPurpose) {
    // What a keyword adds for either driver to a string that holds the server alone.
    const struct {
        QString item;
        QString freeTds;
        QString microsoft;
    } cases[] = {
        {u"Provider=SQLOLEDB"_s, u""_s, u""_s},
        {u"Provider=SQLNCLI.1"_s, u""_s, u""_s},
        {u"Provider=SQLNCLI10.1"_s, u""_s, u""_s},
        {u"provider=sqlncli11"_s, u""_s, u""_s},
        {u"Provider=MSOLEDBSQL"_s, u""_s, u""_s},
        {u"Provider=MSOLEDBSQL19.1"_s, u""_s, u""_s},
        {u"Initial Catalog=同意"_s, u"Database=同意;"_s, u"Database=同意;"_s},
        {u"Database=D"_s, u"Database=D;"_s, u"Database=D;"_s},
        {u"User ID=u"_s, u"UID=u;"_s, u"UID=u;"_s},
        {u"User=u"_s, u"UID=u;"_s, u"UID=u;"_s},
        {u"UID=u"_s, u"UID=u;"_s, u"UID=u;"_s},
        {u"Password='a;b}'"_s, u"PWD={a;b}}};"_s, u"PWD={a;b}}};"_s},
        {u"PWD=p"_s, u"PWD=p;"_s, u"PWD=p;"_s},
        {u"Integrated Security=SSPI;UID=u;PWD=p"_s, u"Trusted_Connection=Yes;"_s,
         u"Trusted_Connection=Yes;"_s},
        {u"Trusted_Connection=yes"_s, u"Trusted_Connection=Yes;"_s, u"Trusted_Connection=Yes;"_s},
        {u"Integrated Security=;UID=u"_s, u"UID=u;"_s, u"UID=u;"_s},
        {u"Use Encryption for Data=True"_s, u"Encryption=require;"_s, u"Encrypt=Yes;"_s},
        {u"Encrypt=Mandatory"_s, u"Encryption=require;"_s, u"Encrypt=Yes;"_s},
        {u"Encrypt=Strict"_s, u"Encryption=require;"_s, u"Encrypt=strict;"_s},
        {u"Encrypt=Optional"_s, u""_s, u"Encrypt=No;"_s},
        {u"Trust Server Certificate=True"_s, u""_s, u"TrustServerCertificate=Yes;"_s},
        {u"TrustServerCertificate=no"_s, u""_s, u"TrustServerCertificate=No;"_s},
        {u"Host Name In Certificate=h"_s, u""_s, u"HostNameInCertificate=h;"_s},
        {u"HostNameInCertificate=h"_s, u""_s, u"HostNameInCertificate=h;"_s},
        {u"Application Name=同意書 管理"_s, u"APP={同意書 管理};"_s, u"APP={同意書 管理};"_s},
        {u"APP=a"_s, u"APP=a;"_s, u"APP=a;"_s},
        {u"Workstation ID=w"_s, u"WSID=w;"_s, u"WSID=w;"_s},
        {u"WSID=w"_s, u"WSID=w;"_s, u"WSID=w;"_s},
        {u"Packet Size=8192"_s, u"PacketSize=8192;"_s, u""_s},
        {u"PacketSize=8192"_s, u"PacketSize=8192;"_s, u""_s},
        {u"Current Language=Japanese"_s, u"Language=Japanese;"_s, u"Language=Japanese;"_s},
        {u"Language=Japanese"_s, u"Language=Japanese;"_s, u"Language=Japanese;"_s},
        {u"Initial File Name=f.mdf"_s, u"AttachDbFilename=f.mdf;"_s, u"AttachDbFilename=f.mdf;"_s},
        {u"AttachDBFileName=f.mdf"_s, u"AttachDbFilename=f.mdf;"_s, u"AttachDbFilename=f.mdf;"_s},
        {u"MARS Connection=True"_s, u"MARS_Connection=Yes;"_s, u"MARS_Connection=Yes;"_s},
        {u"MarsConn=no"_s, u"MARS_Connection=No;"_s, u"MARS_Connection=No;"_s},
        {u"Application Intent=READONLY"_s, u"ApplicationIntent=ReadOnly;"_s,
         u"ApplicationIntent=ReadOnly;"_s},
        {u"ApplicationIntent=ReadWrite"_s, u""_s, u""_s},
        {u"Server SPN=s"_s, u"ServerSPN=s;"_s, u"ServerSPN=s;"_s},
        {u"ServerSPN=s"_s, u"ServerSPN=s;"_s, u"ServerSPN=s;"_s},
        {u"Failover Partner=f"_s, u""_s, u"Failover_Partner=f;"_s},
        {u"FailoverPartner=f"_s, u""_s, u"Failover_Partner=f;"_s},
        {u"MultiSubnetFailover=True"_s, u""_s, u"MultiSubnetFailover=Yes;"_s},
    };
    const QString microsoftStart = u"Driver={ODBC Driver 18 for SQL Server};Server=S;"_s;
    const QString freeTdsEnd = u"TDS_Version=7.4;ClientCharset=UTF-8;"_s;
    for (const auto &c : cases) {
        const QString text = u"Data Source=S;"_s + c.item;
        EXPECT_EQ(mapped(text, freeTds), u"Driver=FreeTDS;Server=S;Port=1433;"_s + c.freeTds + freeTdsEnd);
        QString added = mapped(text, microsoft).mid(microsoftStart.size());
        if (!c.microsoft.startsWith(u"Encrypt="))
            added.remove(u"Encrypt=No;"_s);
        EXPECT_EQ(added, c.microsoft);
    }
}

TEST(OdbcTarget, ServersAreTakenApartForFreeTds) {
    const struct {
        QString items;
        QString freeTds;
        QString microsoft;
    } cases[] = {
        {u"Data Source=srv"_s, u"Server=srv;Port=1433;"_s, u"Server=srv;"_s},
        {u"Server=srv,1500"_s, u"Server=srv;Port=1500;"_s, u"Server={srv,1500};"_s},
        {u"Data Source=srv\\inst"_s, u"Server=srv\\inst;"_s, u"Server=srv\\inst;"_s},
        {u"Data Source=srv\\inst , 1500"_s, u"Server=srv;Port=1500;"_s, u"Server={srv\\inst , 1500};"_s},
        {u"Data Source=tcp:srv,1500"_s, u"Server=srv;Port=1500;"_s, u"Server={tcp:srv,1500};"_s},
        {u"Data Source=(local)\\SQLEXPRESS"_s, u"Server=localhost\\SQLEXPRESS;"_s,
         u"Server={(local)\\SQLEXPRESS};"_s},
        {u"Data Source=."_s, u"Server=localhost;Port=1433;"_s, u"Server=.;"_s},
        {u"Network Address=10.0.0.5"_s, u"Server=10.0.0.5;Port=1433;"_s, u"Server=10.0.0.5;"_s},
        {u"Address=a"_s, u"Server=a;Port=1433;"_s, u"Server=a;"_s},
        {u"Addr=a"_s, u"Server=a;Port=1433;"_s, u"Server=a;"_s},
        {u"Data Source=srv;Network Library=DBMSSOCN"_s, u"Server=srv;Port=1433;"_s, u"Server=tcp:srv;"_s},
        {u"Data Source=np:srv;Net=dbmssocn"_s, u"Server=srv;Port=1433;"_s, u"Server=np:srv;"_s},
        {u"Data Source=srv;Network=DBNMPNTW"_s, u"Server=srv;Port=1433;"_s, u"Server=np:srv;"_s},
    };
    for (const auto &c : cases) {
        EXPECT_TRUE(mapped(c.items, freeTds).contains(u';' + c.freeTds + u"TDS"_s)) << c.items.toStdString();
        EXPECT_TRUE(mapped(c.items, microsoft).contains(u';' + c.microsoft + u"Enc"_s))
            << c.items.toStdString();
    }
}

TEST(OdbcTarget, TheLogInWaitsFifteenSecondsAtMost) {
    const struct {
        QString item;
        int seconds;
    } cases[] = {{u""_s, 15},
                 {u"Connect Timeout=5"_s, 5},
                 {u"Connection Timeout=15"_s, 15},
                 {u"Timeout=60"_s, 15},
                 {u"Connect Timeout=0"_s, 15}};
    for (const auto &c : cases)
        EXPECT_EQ(odbcTarget(ConnectionString(u"Data Source=S;"_s + c.item), freeTds).loginSeconds,
                  c.seconds);
}

TEST(OdbcTarget, OdbcStringsPassAsTheyAre) {
    const struct {
        QString text;
        QString server;
        QString driver;
        QString password;
    } cases[] = {
        {u"Driver={My Driver};Server=srv;UID=u;PWD={a;b};Odd=1"_s, u"srv"_s, u"My Driver"_s, u"a;b"_s},
        {u"DSN=suite;Password=p"_s, u"suite"_s, u""_s, u"p"_s},
        {u"driver=FreeTDS;Servername=conf;tds_version=7.1"_s, u"conf"_s, u"FreeTDS"_s, u""_s},
    };
    for (const auto &c : cases) {
        const OdbcTarget target = odbcTarget(ConnectionString(c.text), {});
        EXPECT_EQ(target.reason, u""_s);
        EXPECT_EQ(target.connectionString, c.text);
        EXPECT_EQ(target.server, c.server);
        EXPECT_EQ(target.driver, c.driver);
        EXPECT_EQ(target.password, c.password);
    }
    // FreeTDS alone is told a version where none is given.
    EXPECT_EQ(mapped(u"Driver={FreeTDS};Server=srv"_s, {}),
              u"Driver={FreeTDS};Server=srv;TDS_Version=7.4;"_s);
    EXPECT_EQ(mapped(u"Driver=/usr/lib/libtdsodbc.so;Server=srv;"_s, {}),
              u"Driver=/usr/lib/libtdsodbc.so;Server=srv;TDS_Version=7.4;"_s);
}

TEST(OdbcTarget, WhatCannotBeMappedIsRefusedWithTheServersName) {
    const struct {
        QString items;
        QString part; ///< of the reason
    } cases[] = {
        {u"Pasword=secret"_s, u"不明な項目「Pasword」"_s},
        {u"User ID=x;Use Encrypton for Data=True"_s, u"不明な項目「Use Encrypton for Data」"_s},
        {u"Password=ab;secret=x"_s, u"「;」を含むパスワードは引用符で囲んでください"_s},
        {u"Provider=Microsoft.Jet.OLEDB.4.0"_s, u"プロバイダー「Microsoft.Jet.OLEDB.4.0」"_s},
        {u"Integrated Security=maybe"_s, u"項目「Integrated Security」の値"_s},
        {u"Use Encryption for Data=maybe"_s, u"項目「Use Encryption for Data」の値"_s},
        {u"Trust Server Certificate=SSPI"_s, u"項目「Trust Server Certificate」の値"_s},
        {u"MARS Connection=2"_s, u"項目「MARS Connection」の値"_s},
        {u"Connect Timeout=soon"_s, u"項目「Connect Timeout」の値"_s},
        {u"Packet Size=big"_s, u"項目「Packet Size」の値"_s},
        {u"Network Library=DBMSRPCN"_s, u"項目「Network Library」の値"_s},
        {u"Password='secret"_s, u"閉じられていません"_s},
    };
    for (const auto &c : cases) {
        const OdbcTarget target = odbcTarget(ConnectionString(u"Data Source=SRV;"_s + c.items), freeTds);
        EXPECT_TRUE(target.reason.contains(c.part)) << target.reason.toStdString();
        EXPECT_TRUE(target.reason.contains(u"サーバー「SRV」")) << target.reason.toStdString();
        EXPECT_FALSE(target.reason.contains(u"secret"));
        EXPECT_EQ(target.connectionString, QString());
    }
    EXPECT_TRUE(mapped(u"Data Source=srv,70000"_s, freeTds).contains(u"項目「Data Source」の値"));
    EXPECT_TRUE(
        mapped(u"Provider=SQLOLEDB;UID=sa"_s, freeTds).contains(u"サーバー（Data Source）がありません"));
    EXPECT_TRUE(mapped(u"Data Source=S"_s, {u"SQLite3"_s}).contains(u"ODBC ドライバーがありません"));
}

TEST(OdbcTarget, PostgresIsReachedByItsOwnDriver) {
    const QStringList drivers = {u"FreeTDS"_s, u"PostgreSQL Unicode"_s};
    const auto begins = [&](const QString &text, const QString &wanted) {
        EXPECT_TRUE(mapped(text, drivers).startsWith(wanted)) << mapped(text, drivers).toStdString();
    };
    begins(
        u"Provider=PostgreSQL;Server=srv;Database=suite;User ID=u;Password='a;b}'"_s,
        u"Driver={PostgreSQL Unicode};Server=srv;Port=5432;Database=suite;UID=u;PWD={a;b}}};SSLmode=prefer;"_s);
    begins(u"Provider=PGNP.1;Data Source=srv;Port=5433;Initial Catalog=同意;Use Encryption for Data=True"_s,
           u"Driver={PostgreSQL Unicode};Server=srv;Port=5433;Database=同意;SSLmode=require;"_s);
    begins(u"provider=postgresql;Host=srv;Database=d;SSL Mode=verify-full;User=u;PWD=p"_s,
           u"Driver={PostgreSQL Unicode};Server=srv;Port=5432;Database=d;UID=u;PWD=p;SSLmode=verify-full;"_s);

    const std::pair<QString, QString> refused[] = {
        {u"Provider=PostgreSQL;Database=d"_s, u"サーバー（Server）がありません"_s},
        {u"Provider=PostgreSQL;Server=srv"_s, u"データベース（Database）がありません"_s},
        {u"Provider=PostgreSQL;Server=srv;Database=d;Port=70000"_s, u"「Port」の値"_s},
        {u"Provider=PostgreSQL;Server=srv;Database=d;PWD=geheim;b=c"_s, u"不明です"_s}};
    for (const auto &[text, part] : refused) {
        EXPECT_TRUE(mapped(text, drivers).contains(part)) << mapped(text, drivers).toStdString();
        EXPECT_FALSE(mapped(text, drivers).contains(u"b=c"_s));
    }
    EXPECT_TRUE(
        mapped(u"Provider=PostgreSQL;Server=srv;Database=d"_s, freeTds).contains(u"odbc-postgresql"_s));
}
