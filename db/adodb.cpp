#include "db/adodb.h"

#include <QSysInfo>

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr short defaultTimeout = 180; // seconds
} // namespace

cT_ADODB::cT_ADODB(ProviderFactory factory) : m_factory(std::move(factory)) {}

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
    return 0;
}

QString cT_ADODB::csGetComputerName() const {
    // The operating system's buffer holds 15 characters and the closing NUL.
    QString name = QSysInfo::machineHostName().section(u'.', 0, 0).left(15);
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
    vAddAdoErrorLog(m_errors);
    return -1;
}

short cT_ADODB::iConnect() {
    if (!m_provider)
        m_provider = m_factory(m_connectionString);
    if (!m_provider)
        return failed();
    if (!m_provider->isOpen()) {
        m_inTransaction = m_transactionOver = false;
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
    m_inTransaction = m_transactionOver = false;
    return 0;
}

short cT_ADODB::iOpenRecSet(Recordset &rows, const QString &sql, int, int, int) {
    rows.close();
    if (!ready())
        return -1;
    if (m_provider->query(sql, rows))
        return 0;
    rows.close();
    m_transactionOver = m_inTransaction;
    return failed();
}

short cT_ADODB::iCloseRecSet(Recordset &rows) {
    rows.close();
    return 0;
}

short cT_ADODB::iExecSQL(const QString &sql, qint64 *affected) {
    if (!ready())
        return -1;
    if (m_provider->execute(sql, affected))
        return 0;
    m_transactionOver = m_inTransaction;
    return failed();
}

short cT_ADODB::iBeginTrans() {
    if (!ready())
        return -1;
    if (m_inTransaction)
        return refused(u"トランザクションは既に開始されています。"_s);
    if (!m_provider->begin())
        return failed();
    m_inTransaction = true;
    return 0;
}

short cT_ADODB::iCommitTrans() {
    if (!ready())
        return -1;
    if (!m_inTransaction)
        return refused(u"トランザクションが開始されていません。"_s);
    if (m_provider->commit()) {
        m_inTransaction = false;
        return 0;
    }
    m_transactionOver = true;
    return failed();
}

short cT_ADODB::iRollback() {
    if (!m_provider || !m_inTransaction)
        return refused(u"トランザクションが開始されていません。"_s);
    const bool over = m_transactionOver;
    m_inTransaction = m_transactionOver = false;
    // A failed statement has ended the transaction already; there is nothing left to undo.
    const bool done = over || !m_provider->isOpen() || m_provider->rollback();
    if (!m_provider->errors().isEmpty())
        vAddAdoErrorLog(m_errors);
    return done ? 0 : -1;
}

short cT_ADODB::iSetTimeout(short seconds) {
    if (seconds > 0 && m_provider)
        m_provider->setCommandTimeout(seconds);
    return 0;
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

QString cT_ADODB::csNull(const Recordset &rows, int row, int column) {
    return rows.isNull(row, column) ? u""_s : rows.text(row, column);
}

short cT_ADODB::iNull(const Recordset &rows, int row, int column) {
    return short(rows.number(row, column));
}

qint64 cT_ADODB::mNull(const Recordset &rows, int row, int column) {
    return rows.number(row, column);
}

QDate cT_ADODB::tNull(const Recordset &rows, int row, int column) {
    return rows.date(row, column);
}
