#include "app/check_command.h"

#include "check/database_check.h"
#include "db/adodb.h"
#include "db/column_names.h"
#include "db/connection_settings.h"

#include <QTextStream>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

int runCheckCommand(const Folders &folders, QTextStream &out) {
    constexpr int fits = 0, found = 1, notChecked = 2;
    const auto failed = [&](QString reason) {
        out << reason.replace(u'\r', u'\n').trimmed() << Qt::endl;
        return notChecked;
    };
    const Result<QString> connection = readConnectionString(folders);
    if (!connection)
        return failed(connection.reason());
    const ColumnNamesRead names = readColumnNames(folders);
    for (const QString &oddity : names.oddities)
        out << u"列名.ini："_s << oddity << Qt::endl;
    cT_ADODB db;
    db.setColumnNames(names.names);
    db.iInit(*connection);
    const Result<std::vector<Finding>> findings = checkDatabase(db);
    if (!findings)
        return failed(findings.reason());
    out << db.sDbName() << Qt::endl << reportOf(*findings) << Qt::flush;
    return names.oddities.isEmpty() && std::ranges::none_of(*findings, &Finding::isTrouble) ? fits : found;
}
