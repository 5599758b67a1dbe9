#include "setup/practice_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"

using namespace Qt::Literals::StringLiterals;

namespace setup {

Result<qint64> countRows(cT_ADODB &db, const QString &table) {
    const Result<Recordset> rows = readRows(db, u"SELECT COUNT(*) FROM "_s + table);
    return rows ? Result<qint64>(rows->number(0, 0)) : Failure{rows.reason()};
}

// A year is one statement: a round trip a day would take seconds over a slow line.
short insertHolidays(cT_ADODB &db, const Branch &branch, const QList<Holiday> &holidays) {
    QStringList rows;
    for (const Holiday &holiday : holidays)
        rows.append(u"(%1, %2, %3, %4, %5, 1, %6)"_s.arg(branch.iKyotenCd)
                        .arg(branch.iKyotenEb)
                        .arg(holiday.date.year())
                        .arg(holiday.date.month())
                        .arg(holiday.date.day())
                        .arg(sqlText(holiday.name)));
    return db.iExecSQL(
        u"INSERT INTO HOLIDAY (iKyotenCd, iKyotenEb, iYear, iMonth, iDay, iChkCalendar, cName) VALUES "_s +
        rows.join(u", "_s));
}

} // namespace setup
