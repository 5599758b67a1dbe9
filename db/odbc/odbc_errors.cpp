#include "db/odbc/odbc_errors.h"

#include "db/ado_error.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <vector>

using namespace Qt::Literals::StringLiterals;

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "texts go to ODBC as UTF-16");

namespace {

/// The description without the brackets in front of it, which name the layers that the error came through.
void splitSource(ProviderError &error) {
    static const QRegularExpression layers(u"^(?:\\[[^\\]]*\\])+"_s);
    const QRegularExpressionMatch match = layers.match(error.description);
    error.source = match.hasMatch() ? match.captured() : u"ODBC"_s;
    error.description = error.description.mid(match.capturedLength()).trimmed();
}

bool readRecord(SQLSMALLINT handleType, SQLHANDLE handle, SQLSMALLINT index, ProviderError &error) {
    std::array<SQLWCHAR, 6> state{};
    std::vector<SQLWCHAR> message(512);
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const auto read = [&] {
        return SQLGetDiagRecW(handleType, handle, index, state.data(), &native, message.data(),
                              SQLSMALLINT(message.size()), &length);
    };
    SQLRETURN result = read();
    if (result == SQL_SUCCESS_WITH_INFO && size_t(length) >= message.size()) {
        message.resize(std::min<size_t>(size_t(length) + 1, 32767));
        result = read();
    }
    if (!SQL_SUCCEEDED(result))
        return false;
    error.sqlState = QString::fromUtf16(reinterpret_cast<const char16_t *>(state.data()));
    error.nativeError = native;
    const auto *text = reinterpret_cast<const char16_t *>(message.data());
    error.description = QString::fromUtf16(text, qsizetype(std::char_traits<char16_t>::length(text)));
    splitSource(error);
    return true;
}

} // namespace

QList<ProviderError> odbcDiagnostics(SQLSMALLINT handleType, SQLHANDLE handle) {
    constexpr SQLSMALLINT enough = 100; // a driver that never ends its list
    QList<ProviderError> errors;
    ProviderError error;
    for (SQLSMALLINT i = 1; i <= enough && readRecord(handleType, handle, i, error); ++i) {
        error.number = adoErrorNumber(error.sqlState);
        errors.append(error);
    }
    // A general remark ("The statement has been terminated.") goes with the error that it is about.
    const auto real = std::find_if(errors.begin(), errors.end(),
                                   [](const ProviderError &e) { return !e.sqlState.startsWith(u"01"); });
    if (real != errors.end())
        for (ProviderError &e : errors)
            if (e.sqlState.startsWith(u"01"))
                e.number = real->number;
    return errors;
}

ProviderError odbcError(const QString &sqlState, const QString &description) {
    return {adoErrorNumber(sqlState), description, u"ODBC"_s, sqlState, 0};
}

ProviderError lateError(std::chrono::seconds limit) {
    return odbcError(u"HYT00"_s, u"%1秒以内に応答がありません。"_s.arg(limit.count()));
}

bool saysConnectionLost(const QList<ProviderError> &errors) {
    // Class 08, and what PostgreSQL says to the sessions that it ends (57P01, 57P02).
    return std::any_of(errors.begin(), errors.end(), [](const ProviderError &e) {
        return e.sqlState.startsWith(u"08") || e.sqlState.startsWith(u"57P0");
    });
}

bool saysNothingToUndo(const QList<ProviderError> &errors) {
    constexpr qint32 rollbackWithoutBegin = 3903; // SQL Server's number
    return std::any_of(errors.begin(), errors.end(), [](const ProviderError &e) {
        return e.sqlState == u"25000" || e.nativeError == rollbackWithoutBegin;
    });
}

void hidePassword(QList<ProviderError> &errors, const QString &password) {
    if (password.isEmpty())
        return;
    // A short one is hidden only where it stands alone, lest it blot out words that it is a part of.
    const bool isShort = password.size() < 4;
    const QString escaped = QRegularExpression::escape(password);
    const QRegularExpression hidden(isShort ? u"(?<!\\w)"_s + escaped + u"(?!\\w)"_s : escaped,
                                    QRegularExpression::UseUnicodePropertiesOption);
    for (ProviderError &error : errors)
        error.description.replace(hidden, u"***"_s);
}
