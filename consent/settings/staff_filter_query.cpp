#include "consent/settings/staff_filter_query.h"

#include "db/recordset.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"
#include "search/search_class.h"

using namespace Qt::Literals::StringLiterals;

Result<std::optional<QString>> readStaffName(cT_ADODB &db, const Branch &branch, qint64 number) {
    const Result<Recordset> rows =
        readForSearch(db,
                      u"SELECT cName FROM STAFF WHERE nIDNo = "_s + sqlNumber(number) + u" AND "_s +
                          sqlWhere(branch, u"STAFF"),
                      u"csInpKey_Staff() でエラー");
    if (!rows)
        return Failure{u"施術者の検索に失敗しました\r\n"_s + rows.reason()};
    if (rows->rowCount() == 0)
        return std::optional<QString>();
    return std::optional<QString>(rows->text(0, 0));
}
