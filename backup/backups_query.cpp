#include "backup/backups_query.h"

#include "db/adodb.h"
#include "db/connection_settings.h"

using namespace Qt::Literals::StringLiterals;

Result<qint64> countConsents(const QString &file) {
    const Result<QString> connection = embeddedConnection(file);
    if (!connection)
        return Failure{connection.reason()};
    cT_ADODB db;
    db.iInit(*connection);
    const Result<Recordset> rows = readRows(db, u"SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC"_s);
    return rows ? Result<qint64>(rows->number(0, 0)) : Failure{rows.reason()};
}
