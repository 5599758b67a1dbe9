#include "db/adodb.h"
#include "db/connection_settings.h"

#include "app/base/platform/desktop.h"
#include "db/column_names.h"
#include "db/connection_settings.h"

#include <algorithm>
#include <exception>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr short defaultTimeout = 180; // seconds
} // namespace

cT_ADODB::cT_ADODB(ProviderFactory factory)
    : m_factory(std::move(factory)), m_names(std::make_unique<ColumnNames>()) {}

cT_ADODB::~cT_ADODB() {
    iDisConnect();
}

QString cT_ADODB::sDbName() const {
    return isConnected() ? m_provider->databaseName() : QString();
}

bool cT_ADODB::isConnected() const {
    return m_provider && m_provider->isOpen();
}

short cT_ADODB::iInit(const QString &connectionString) {
    m_connectionString = connectionString;
    m_names->unsettle();
    return 0;
}

QString cT_ADODB::databaseName() const {
    return ::databaseName(m_connectionString);
}

QString cT_ADODB::csGetComputerName() const {
    // The operating system's buffer holds 15 characters and the closing NUL.
    QString name = platform::computerName();
    while (name.endsWith(u' '))
        name.chop(1);
    if (name.endsWith(QChar(u'\0')))
        name.chop(1);
    return name;
}

void cT_ADODB::vAddAdoErrorLog(QString &text) {
    if (!m_provider || m_provider->errors().isEmpty())
        return;
    const auto piece = [&text](const QString &label, const auto &value) {
        text += u"\r%1%2"_s.arg(label, value);
    };
    piece(u"Connection State="_s, QString::number(isConnected() ? 1 : 0));
    for (const ProviderError &error : m_provider->errors()) {
        piece(u"Error Number: "_s, QString::number(error.number));
        piece(u"  Description: "_s, error.description);
        piece(u"  Source: "_s, error.source);
        piece(u"  SQL State: "_s, error.sqlState);
        piece(u"  Native Error: "_s, QString::number(error.nativeError));
    }
    text += u"\r\r%1 provider error(s) occurred."_s.arg(m_provider->errors().size());
    m_provider->clearErrors();
}

short cT_ADODB::failed() {
    if (m_provider && saysDeadlock(m_provider->errors())) {
        m_deadlocked = true;
        refused(u"他のＰＣの処理と互いに待ち合ったため、取り消されました。何も変更していません。"
                "少し待ってから、もう一度行ってください。"_s);
    }
    vAddAdoErrorLog(m_errors);
    return -1;
}

short cT_ADODB::iConnect() {
    if (!m_provider)
        m_provider = m_factory(m_connectionString);
    if (!m_provider)
        return refused(u"接続文字列に合うデータベースがありません。"_s);
    if (!m_provider->isOpen()) {
        // A transaction went with the lost connection: what belongs to it must not be sent outside it.
        m_transactionOver = m_inTransaction;
        // Another server may answer, or the same one with other columns.
        m_names->unsettle();
        m_history = {.told = m_history.told};
        m_provider->open(m_connectionString);
        // Not open, but no error either, counts as open: what follows will tell.
        if (!m_provider->isOpen() && !m_provider->errors().isEmpty())
            return failed();
    }
    return iSetTimeout(defaultTimeout);
}

short cT_ADODB::iDisConnect() {
    if (!m_provider)
        return 0;
    m_provider->close();
    m_provider.reset();
    m_transactionOver = m_inTransaction;
    return 0;
}

short cT_ADODB::iOpenRecSet(Recordset &rows, const QString &sql, int, int, int) {
    rows.close();
    const bool mayRepeat = isConnected() && !m_inTransaction;
    const auto query = [&] {
        const QString text = named(sql);
        return !m_transactionOver && m_provider->query(text, rows);
    };
    short status = attempt(query);
    // A connection that was lost meanwhile is worth a second try: reading changes nothing.
    if (status != 0 && mayRepeat && !isConnected() && iConnect() == 0)
        status = attempt(query);
    if (status != 0)
        rows.close();
    return status;
}

short cT_ADODB::iCloseRecSet(Recordset &rows) {
    rows.close();
    return 0;
}

short cT_ADODB::iExecSQL(const QString &sql, qint64 *affected) {
    return attempt([&] {
        const QString text = named(sql);
        return !m_transactionOver && m_provider->execute(text, affected);
    });
}

short cT_ADODB::iExecSQLs(const QStringList &statements, QList<qint64> &affected) {
    return attempt([&] {
        QStringList texts;
        for (const QString &sql : statements)
            texts += named(sql);
        return !m_transactionOver && m_provider->executeAll(texts, affected);
    });
}

short cT_ADODB::iBeginTrans() {
    m_deadlocked = false;
    if (!ready())
        return -1;
    if (m_inTransaction)
        return refused(u"トランザクションは既に開始されています。"_s);
    const short status = attempt([this] { return m_provider->begin(); });
    m_inTransaction = status == 0;
    return status;
}

short cT_ADODB::iCommitTrans() {
    if (!ready())
        return -1;
    if (!m_inTransaction)
        return refused(u"トランザクションが開始されていません。"_s);
    const short status = attempt([this] { return m_provider->commit(); });
    m_inTransaction = status != 0;
    return status;
}

short cT_ADODB::iRollback() {
    if (!m_inTransaction)
        return refused(u"トランザクションが開始されていません。"_s);
    const bool over = m_transactionOver;
    m_inTransaction = m_transactionOver = false;
    // A failed statement has ended the transaction already; there is nothing left to undo.
    const bool done = over || !isConnected() || m_provider->rollback();
    vAddAdoErrorLog(m_errors);
    return done ? 0 : -1;
}

short cT_ADODB::iSetTimeout(short seconds) {
    if (seconds > 0 && m_provider)
        m_provider->setCommandTimeout(seconds);
    return 0;
}

/// Sends something to the provider. A failure ends a running transaction; what is thrown (for want of memory,
/// say) is a failure.
template <class Operation> short cT_ADODB::attempt(Operation operation) {
    if (!ready())
        return -1;
    try {
        if (operation())
            return 0;
    } catch (const std::exception &error) {
        refused(QString::fromLocal8Bit(error.what()));
    }
    m_transactionOver = m_inTransaction;
    return failed();
}

// Whether a statement may be sent; the reason stands in sErrMsg when not.
bool cT_ADODB::ready() {
    if (!isConnected())
        refused(u"データベースに接続されていません。"_s);
    else if (m_transactionOver)
        refused(u"先のエラーによりトランザクションは取り消されました。"_s);
    else
        return true;
    return false;
}

short cT_ADODB::refused(const QString &reason) {
    m_errors += u"\r"_s + reason;
    return -1;
}

void cT_ADODB::setColumnNames(const ColumnNames &names) {
    *m_names = names;
}

short cT_ADODB::iOpenColumns(Recordset &columns) {
    columns.close();
    if (attempt([&] { return m_provider->query(m_provider->columnsSql(), columns); }) != 0)
        return -1;
    m_names->settle(columns);
    return 0;
}

short cT_ADODB::iOpenIndexes(Recordset &indexes) {
    indexes.close();
    return attempt([&] { return m_provider->query(m_provider->indexesSql(), indexes); });
}

bool cT_ADODB::hasColumn(QStringView table, QStringView column) {
    settleNames();
    return m_names->has(table, column);
}

// Where the catalogue cannot be read the names hold as they are said: the statement itself will tell.
void cT_ADODB::settleNames() {
    Recordset columns;
    if (m_names->isSettled() || !isConnected() || m_transactionOver)
        return;
    if (m_provider->query(m_provider->columnsSql(), columns))
        m_names->settle(columns);
    else if (!m_inTransaction)
        m_provider->clearErrors();
    else
        m_transactionOver = true;
}

QString cT_ADODB::named(const QString &sql) {
    if (m_names->areOurs() || !ColumnNames::concerns(sql))
        return sql;
    // What makes tables names the columns that it makes.
    for (const QStringView verb : {u"CREATE", u"ALTER", u"DROP"})
        if (QStringView(sql).trimmed().startsWith(verb, Qt::CaseInsensitive)) {
            m_names->unsettle();
            return sql;
        }
    settleNames();
    return m_names->applied(sql);
}

QString cT_ADODB::csNull(const Recordset &rows, int row, int column) {
    return rows.isNull(row, column) ? u""_s : rows.text(row, column);
}

short cT_ADODB::iNull(const Recordset &rows, int row, int column) {
    using Limits = std::numeric_limits<short>;
    return short(std::clamp<qint64>(rows.number(row, column), Limits::min(), Limits::max()));
}

qint64 cT_ADODB::mNull(const Recordset &rows, int row, int column) {
    return rows.number(row, column);
}

QDate cT_ADODB::tNull(const Recordset &rows, int row, int column) {
    return rows.date(row, column);
}

Result<Recordset> readRows(cT_ADODB &db, const QString &sql) {
    const ErrorsSince errors(db);
    Recordset rows;
    if (db.iConnect() != 0 || db.iOpenRecSet(rows, sql) != 0)
        return Failure{errors.text()};
    return rows;
}
