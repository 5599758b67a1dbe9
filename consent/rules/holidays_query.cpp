#include "consent/rules/holidays_query.h"

#include "db/adodb.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

short readHolidays(cT_ADODB &db, const Branch &branch, Holidays &holidays) {
    const QString sql = u"SELECT iYear, iMonth, iDay FROM HOLIDAY WHERE "_s + sqlWhere(branch, u"HOLIDAY") +
                        u" and iChkCalendar <> 0"_s;
    Recordset rows;
    if (db.iOpenRecSet(rows, sql) != 0)
        return -1;
    std::vector<QDate> days;
    days.reserve(size_t(rows.rowCount()));
    for (int row = 0; row < rows.rowCount(); ++row)
        days.emplace_back(int(rows.number(row, 0)), int(rows.number(row, 1)), int(rows.number(row, 2)));
    holidays = Holidays(std::move(days));
    return 0;
}
