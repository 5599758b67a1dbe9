#pragma once

#include <QList>
#include <QString>

/// One "keyword=value" of a connection string, in the order given.
struct ConnectionItem {
    QString keyword;  ///< as written, without the blanks around it
    QString value;    ///< without quotes
    qsizetype at = 0; ///< where the keyword begins, counted from 1
};

/// A connection string taken apart. Strings with a Provider, or with no sign of anything else, follow OLE DB:
/// values in '…', "…" or {…} keep blanks and semicolons, a doubled closing sign stands for one, == in a
/// keyword for =. Strings with Driver, DSN or FileDSN follow ODBC: only {…} quotes. Keywords ignore ASCII
/// case.
class ConnectionString {
public:
    enum class Kind { Embedded, OleDb, Odbc };

    explicit ConnectionString(const QString &text);

    Kind kind() const { return m_kind; }
    const QString &text() const { return m_text; }
    const QList<ConnectionItem> &items() const { return m_items; }

    /// Why the string could not be read, for people; empty when it could. Quotes no part of the string,
    /// which may hold a password.
    const QString &reason() const { return m_reason; }
    bool isValid() const { return m_reason.isEmpty(); }

    /// The value that counts when a keyword is repeated: the last one, but of Provider, and of everything in
    /// an ODBC string, the first one. Null when the keyword is not there.
    QString value(QStringView keyword) const;

private:
    QString m_text;
    QList<ConnectionItem> m_items;
    QString m_reason;
    Kind m_kind = Kind::OleDb;
};

/// Whether two keywords are the same: ASCII case ignored.
bool sameKeyword(QStringView a, QStringView b);
