#pragma once

#include "app/base/result.h"
#include "db/provider.h"
#include "db/recordset.h"

#include <QString>
#include <functional>
#include <memory>

class ColumnNames;

/// Whether a database keeps the history of what is written to it, as far as a connection knows.
struct HistoryState {
    enum Kind {
        Unknown, ///< nothing was written yet
        Kept,
        Missing, ///< its tables are not there
        Unfit,   ///< they are, but nothing can be written to them
        Newer    ///< a newer version of the program made them: they are left alone
    };
    Kind kind = Unknown;
    QString reason = {}; ///< what the database said, where history is not kept
    bool told = false;   ///< the user knows that it is not
};

/// Cursor types, lock types and options as callers of iOpenRecSet give them. Every recordset here is a
/// snapshot that is read whole; the values are taken for the callers' sake and change nothing.
enum CursorType { adOpenForwardOnly = 0, adOpenKeyset = 1, adOpenDynamic = 2, adOpenStatic = 3 };
enum LockType { adLockReadOnly = 1, adLockPessimistic = 2, adLockOptimistic = 3 };

/// The database connection of the run. Operations give 0, or −1 with the reason appended to sErrMsg;
/// sErrMsg only grows.
class cT_ADODB {
public:
    using ProviderFactory = std::function<std::unique_ptr<DbProvider>(const QString &connectionString)>;

    explicit cT_ADODB(ProviderFactory factory = makeProvider);
    ~cT_ADODB();
    cT_ADODB(const cT_ADODB &) = delete;
    cT_ADODB &operator=(const cT_ADODB &) = delete;

    const QString &sErrMsg() const { return m_errors; }
    /// The connection's default database name; empty without a connection.
    QString sDbName() const;
    /// What differs by engine beyond the SQL that is sent: catalogues, backups. Of an open connection.
    SqlDialect dialect() const { return m_provider ? m_provider->dialect() : SqlDialect::SqlServer; }
    short ihehe() const { return 0; }

    /// What tells the connection's database from others, see databaseName().
    QString databaseName() const;
    short iInit(const QString &connectionString);
    QString csGetComputerName() const;

    /// Appends the provider's errors to `text` and clears them; nothing when there are none.
    void vAddAdoErrorLog(QString &text);

    short iConnect();
    short iDisConnect();

    /// Opens `rows` with the rows of one SELECT.
    short iOpenRecSet(Recordset &rows, const QString &sql, int cursorType = adOpenKeyset,
                      int lockType = adLockReadOnly, int options = 0);
    short iCloseRecSet(Recordset &rows);
    short iExecSQL(const QString &sql, qint64 *affected = nullptr);
    /// Statements of one transaction, sent together; `affected` takes the number of rows that each changed.
    short iExecSQLs(const QStringList &statements, QList<qint64> &affected);

    /// After a failed statement a transaction is over: until iRollback every operation in it fails.
    short iBeginTrans();
    short iCommitTrans();
    short iRollback();

    /// Command time-out in seconds; 0 and less leave it as it is.
    short iSetTimeout(short seconds);

    bool isConnected() const;
    /// Whether the last transaction fell victim to a deadlock.
    bool wasDeadlocked() const { return m_deadlocked; }

    /// @name The database's catalogue
    ///@{
    /// What the practice calls the columns that not every database has. Whether they are there is looked at
    /// when the first statement names one.
    void setColumnNames(const ColumnNames &names);
    const ColumnNames &columnNames() const { return *m_names; }
    /// Also true where nobody can tell.
    bool hasColumn(QStringView table, QStringView column);
    /// The columns of all tables, as DbProvider::columnsSql gives them; optional columns are settled anew.
    short iOpenColumns(Recordset &columns);
    short iOpenIndexes(Recordset &indexes);
    ///@}

    /// Unknown again after every log-in: another server may answer.
    HistoryState &history() { return m_history; }

    /// @name Null-safe readers: Null gives an empty text, 0, 0, an invalid date.
    ///@{
    static QString csNull(const Recordset &rows, int row, int column);
    static short iNull(const Recordset &rows, int row, int column);
    static qint64 mNull(const Recordset &rows, int row, int column);
    static QDate tNull(const Recordset &rows, int row, int column);
    ///@}

private:
    short failed();
    void settleNames();
    QString named(const QString &sql);
    short refused(const QString &reason);
    bool ready();
    template <class Operation> short attempt(Operation operation);

    ProviderFactory m_factory;
    std::unique_ptr<DbProvider> m_provider;
    QString m_connectionString;
    std::unique_ptr<ColumnNames> m_names;
    HistoryState m_history;
    QString m_errors;
    bool m_inTransaction = false;
    bool m_transactionOver = false;
    bool m_deadlocked = false;
};

/// A transaction that rolls back unless it is committed.
class Transaction {
public:
    /// Begins; ask begun() whether it worked.
    explicit Transaction(cT_ADODB &db) : m_db(db), m_open(db.iBeginTrans() == 0) {}
    ~Transaction() {
        if (m_open)
            m_db.iRollback();
    }
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    bool begun() const { return m_open; }
    /// 0, or −1: then everything since the begin is undone.
    short commit() {
        if (!m_open || m_db.iCommitTrans() != 0)
            return -1;
        m_open = false;
        return 0;
    }

private:
    cT_ADODB &m_db;
    bool m_open;
};

/// Does a piece of work that is one transaction, and does it again, up to three times, as long as the server
/// undoes it to resolve a deadlock.
template <class Work> auto againAfterDeadlock(const cT_ADODB &db, const Work &work) {
    constexpr int mostRepetitions = 3;
    auto result = work();
    for (int done = 0; done < mostRepetitions && db.wasDeadlocked(); ++done)
        result = work();
    return result;
}

/// What the connection has said since this was made.
class ErrorsSince {
public:
    explicit ErrorsSince(const cT_ADODB &db) : m_db(db), m_before(db.sErrMsg().size()) {}
    QString text() const { return m_db.sErrMsg().mid(m_before); }

private:
    const cT_ADODB &m_db;
    qsizetype m_before;
};

/// Begins a piece of reading: connects anew where the connection was lost, and reads the rows of one SELECT.
/// In a transaction that was lost with its connection nothing is read. The failure is what the connection
/// said.
Result<Recordset> readRows(cT_ADODB &db, const QString &sql);
