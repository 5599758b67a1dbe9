#include "fees/in_force.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "db/connection_settings.h"
#include "fees/fees_query.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

bool isMonth(const QString &month) {
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    return month.size() == 6 && std::ranges::all_of(month, isDigit) &&
           QDate(month.left(4).toInt(), month.mid(4).toInt(), 1).isValid();
}

std::optional<Recordset> rowsInForce(Environment &environment, QStringView table, const QString &month,
                                     QStringView order, QStringView label) {
    Messages &messages = environment.messages;
    if (!isMonth(month)) {
        messages.failIn(
            u"年月「%1」が正しくありません。202611 のように、年４桁と月２桁で指定してください。"_s.arg(month),
            label);
        return {};
    }
    const Result<QString> connection = readConnectionString(environment.folders);
    if (!connection) {
        messages.fail(connection.reason());
        return {};
    }
    Result<Recordset> rows = readInForce(*connection, table, month, order);
    if (!rows) {
        messages.failIn(rows.reason(), label);
        return {};
    }
    return std::move(*rows);
}

std::optional<qint32> numberIn(const Recordset &rows, int row, QStringView column) {
    const int at = rows.column(column);
    bool isNumber = false;
    const qint32 number = at < 0 ? 0 : rows.text(row, at).toInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}
