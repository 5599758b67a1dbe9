#include "db/odbc/postgres_session.h"

#include "db/odbc/odbc_connection.h"
#include "db/odbc/odbc_errors.h"

#include <array>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

/// All in one round trip.
const QString beginning =
    u"SELECT current_setting('server_encoding'), set_config('datestyle', 'ISO, YMD', false),"
    " set_config('standard_conforming_strings', 'on', false),"
    " set_config('client_min_messages', 'warning', false)"_s;

struct Statement {
    explicit Statement(SQLHDBC connection) { SQLAllocHandle(SQL_HANDLE_STMT, connection, &handle); }
    ~Statement() {
        if (handle)
            SQLFreeHandle(SQL_HANDLE_STMT, handle);
    }
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    SQLHSTMT handle = nullptr;
};

} // namespace

bool beginPostgresSession(SQLHDBC connection, QList<ProviderError> &errors) {
    const Statement statement(connection);
    std::array<SQLWCHAR, 64> encoding{};
    SQLLEN bytes = 0;
    if (!SQL_SUCCEEDED(SQLExecDirectW(statement.handle, odbcText(beginning), SQL_NTS)) ||
        !SQL_SUCCEEDED(SQLFetch(statement.handle)) ||
        !SQL_SUCCEEDED(SQLGetData(statement.handle, 1, SQL_C_WCHAR, encoding.data(),
                                  SQLLEN(encoding.size() * sizeof(SQLWCHAR)), &bytes))) {
        errors = odbcDiagnostics(SQL_HANDLE_STMT, statement.handle);
        return false;
    }
    const QString name = QString::fromUtf16(reinterpret_cast<const char16_t *>(encoding.data()));
    if (name == u"UTF8")
        return true;
    errors = {odbcError(u"08004"_s, u"データベースの文字コードが %1 です。文字コードが UTF8 のデータベースを"
                                    u"作り、接続文字列の Database に指定してください。"_s.arg(name))};
    return false;
}

namespace {

QString meaningOf(const ProviderError &error) {
    const struct {
        QStringView state; ///< or its beginning
        QString meaning;
    } meanings[] = {
        {u"42P01", u"データベースに表がありません。"_s},
        {u"42703", u"データベースの表に列がありません。"_s},
        {u"42883", u"データベースにプログラムの関数がありません。douisho --setup で表を作成してください。"_s},
        {u"42501", u"データベースの権限がありません。管理者に連絡してください。"_s},
        {u"25006", u"サーバーは読み取り専用（複製か復旧中）です。書き込めるサーバーに接続してください。"_s},
        {u"23514", u"文字が長すぎるか、データの決まりに反するため、書き込めません。"_s},
        {u"23", u"データの決まりに反するため、書き込めません。"_s},
        {u"57014", u"時間内に終わらなかったため、処理を中止しました。"_s},
        {u"53100", u"サーバーのディスクに空きがありません。"_s},
        {u"53300", u"サーバーの接続数がいっぱいです。"_s},
    };
    for (const auto &known : meanings)
        if (error.sqlState.startsWith(known.state))
            // The same state stands for operators that do not fit.
            return known.state == u"42883" && !error.description.contains(u'(') ? QString() : known.meaning;
    return {};
}

} // namespace

void explainPostgresErrors(QList<ProviderError> &errors) {
    if (errors.isEmpty())
        return;
    // What is too long for one record, such as the row, goes on in others.
    const QString state = errors.first().sqlState;
    errors.removeIf([&, first = true](const ProviderError &e) mutable {
        return !std::exchange(first, false) && e.sqlState == state;
    });
    ProviderError &error = errors.first();
    error.description = meaningOf(error) + error.description.section(u'\n', 0, 0);
}
