#include "db/odbc/odbc_drivers.h"

#include "db/odbc/odbc_api.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

QStringList installedOdbcDrivers() {
    QStringList drivers;
    SQLHENV environment = nullptr;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment)))
        return drivers;
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, odbcAttribute(SQL_OV_ODBC3), 0);
    std::array<SQLWCHAR, 257> name{};
    std::array<SQLWCHAR, 1024> attributes{};
    SQLSMALLINT length = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(SQLDriversW(environment, direction, name.data(), SQLSMALLINT(name.size()), &length,
                                     attributes.data(), SQLSMALLINT(attributes.size()), &length))) {
        drivers.append(QString::fromUtf16(reinterpret_cast<const char16_t *>(name.data())));
        direction = SQL_FETCH_NEXT;
    }
    SQLFreeHandle(SQL_HANDLE_ENV, environment);
    return drivers;
}

QString whyDriverIsMissing(const QString &driver, const QStringList &installed) {
    if (driver.isEmpty() || driver.contains(u'/') || installed.contains(driver, Qt::CaseInsensitive))
        return {};
    const QString usable =
        installed.isEmpty() ? QString() : u"使えるのは「%1」です。"_s.arg(installed.join(u"」「"));
    return u"ODBC ドライバー「%1」がこのパソコンにありません。%2SQL Server には FreeTDS（Debian では "
           u"tdsodbc）か "
           "ODBC Driver 18 for SQL Server をインストールし、その名前を接続文字列の Driver= に書いてください。"_s
               .arg(driver, usable);
}
