#pragma once

#include "db/provider.h"

#include <algorithm>
#include <functional>

/// A real provider behind a look at every statement, which may change it; begin and commit come as "BEGIN"
/// and "COMMIT". A statement for which the look gives false fails as a server's would.
class WrappedProvider : public DbProvider {
public:
    using Look = std::function<bool(QString &sql)>;
    static inline const QString description = QStringLiteral("The disk is full.");

    WrappedProvider(std::unique_ptr<DbProvider> real, Look look)
        : m_real(std::move(real)), m_look(std::move(look)) {}

    bool open(const QString &connectionString) override { return passed(m_real->open(connectionString)); }
    void close() override { m_real->close(); }
    bool isOpen() const override { return m_real->isOpen(); }
    QString databaseName() const override { return m_real->databaseName(); }
    SqlDialect dialect() const override { return m_real->dialect(); }
    bool query(const QString &sql, Recordset &rows) override {
        QString seen = sql;
        return looked(seen) && passed(m_real->query(seen, rows));
    }
    bool execute(const QString &sql, qint64 *affected) override {
        QString seen = sql;
        return looked(seen) && passed(m_real->execute(seen, affected));
    }
    bool executeAll(const QStringList &statements, QList<qint64> &affected) override {
        QStringList seen = statements;
        const auto bad = std::ranges::find_if_not(seen, m_look);
        if (bad == seen.end())
            return passed(m_real->executeAll(seen, affected));
        return passed(m_real->executeAll({seen.begin(), bad}, affected)) && refused();
    }
    bool begin() override { return looked(QStringLiteral("BEGIN")) && passed(m_real->begin()); }
    bool commit() override { return looked(QStringLiteral("COMMIT")) && passed(m_real->commit()); }
    bool rollback() override { return passed(m_real->rollback()); }
    QString columnsSql() const override { return m_real->columnsSql(); }
    QString indexesSql() const override { return m_real->indexesSql(); }
    void setCommandTimeout(int seconds) override { m_real->setCommandTimeout(seconds); }

private:
    bool looked(QString &&sql) { return looked(sql); }
    bool looked(QString &sql) { return m_look(sql) || refused(); }
    bool refused() {
        m_real->rollback(); // as every provider does when a statement fails
        m_errors.append({-2147217900, description, QStringLiteral("test"), QStringLiteral("HY000"), 13});
        return false;
    }
    bool passed(bool result) {
        m_errors.append(m_real->errors());
        m_real->clearErrors();
        return result;
    }

    std::unique_ptr<DbProvider> m_real;
    Look m_look;
};
