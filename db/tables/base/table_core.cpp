#include "db/tables/base/table_core.h"

#include "db/adodb.h"
#include "db/sql_text.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

short TableCore::iInit(cT_ADODB &db) {
    m_db = &db;
    return 0;
}

short TableCore::iGetComputerName(QString &name) {
    name = m_db ? m_db->csGetComputerName() : QString();
    return name.isEmpty() ? -1 : 0;
}

short TableCore::fail(const QString &reason) {
    m_error = reason;
    return -1;
}

short TableCore::failInvalid() {
    return fail(m_text.name.toString() + u"が無効です。"_s);
}

short TableCore::failDatabase() {
    return fail(m_db ? m_db->sErrMsg() : u"データベースに接続されていません。"_s);
}

short TableCore::takeComputerName(QString &name) {
    return iGetComputerName(name) == 0 ? 0 : fail(u"コンピューター名の取得に失敗しました。"_s);
}

short TableCore::open(Recordset &rows, const QString &sql) {
    if (!m_db || m_db->iOpenRecSet(rows, sql) != 0)
        return failDatabase();
    return 0;
}

short TableCore::readNumber(qint64 &result, const QString &sql) {
    Recordset rows;
    if (open(rows, sql) != 0)
        return -1;
    result = rows.rowCount() > 0 ? rows.number(0, 0) : 0;
    return 0;
}

short TableCore::readExists(bool &exists, const QString &sql) {
    Recordset rows;
    if (open(rows, sql) != 0)
        return -1;
    exists = rows.rowCount() > 0;
    return 0;
}

QString TableCore::writingSql(Writing writing, const QStringList &literals) const {
    switch (writing) {
    case Writing::Insert:
        return insertSql(m_text, literals);
    case Writing::Update:
        return updateSql(m_text, literals);
    case Writing::Delete:
        return deleteSql(m_text, literals);
    }
    return {};
}

short TableCore::write(Writing writing, const QStringList &literals, bool transaction,
                       const std::function<short()> &afterwards) {
    if (writing == Writing::Delete)
        return execute(writingSql(writing, literals), transaction, {});
    QString computer;
    if (takeComputerName(computer) != 0)
        return -1;
    return execute(writingSql(writing, withAudit(m_text, literals, computer)), transaction, afterwards);
}

short TableCore::execute(const QString &sql, bool transaction, const std::function<short()> &afterwards) {
    if (!m_db)
        return failDatabase();
    std::optional<Transaction> own;
    if (transaction && !own.emplace(*m_db).begun())
        return failDatabase();
    if (m_db->iExecSQL(sql, &m_affected) != 0)
        return failDatabase();
    if (afterwards && afterwards() != 0)
        return -1;
    if (own && own->commit() != 0)
        return failDatabase();
    return 0;
}

short TableCore::copyTo(QStringView table, const QList<Copy> &copies) {
    QString computer;
    if (takeComputerName(computer) != 0)
        return -1;
    for (Copy copy : copies) {
        copy.assignments.append({u"cPcName"_s, sqlText(computer)});
        copy.assignments.append({u"tUpDateTime"_s, u"GetDate()"_s});
        if (execute(copySql(table, copy.assignments, copy.where), false, {}) != 0)
            return -1;
    }
    return 0;
}
