#pragma once

#include "db/provider.h"

#include <QStringList>

/// A real provider that notes every statement on its way, as a script would name it.
class NotingProvider : public DbProvider {
public:
    NotingProvider(std::unique_ptr<DbProvider> real, QStringList &script)
        : m_real(std::move(real)), m_script(script) {}

    bool open(const QString &connectionString) override { return m_real->open(connectionString); }
    void close() override { m_real->close(); }
    bool isOpen() const override { return m_real->isOpen(); }
    QString databaseName() const override { return m_real->databaseName(); }
    SqlDialect dialect() const override { return m_real->dialect(); }
    bool query(const QString &sql, Recordset &rows) override {
        m_script.append(sql);
        return m_real->query(sql, rows);
    }
    bool execute(const QString &sql, qint64 *affected) override {
        m_script.append(sql);
        return m_real->execute(sql, affected);
    }
    bool executeAll(const QStringList &statements, QList<qint64> &affected) override {
        m_script += statements;
        return m_real->executeAll(statements, affected);
    }
    bool begin() override {
        m_script.append(QStringLiteral("BEGIN"));
        return m_real->begin();
    }
    bool commit() override {
        m_script.append(QStringLiteral("COMMIT"));
        return m_real->commit();
    }
    bool rollback() override {
        m_script.append(QStringLiteral("ROLLBACK"));
        return m_real->rollback();
    }
    void setCommandTimeout(int seconds) override { m_real->setCommandTimeout(seconds); }

private:
    std::unique_ptr<DbProvider> m_real;
    QStringList &m_script;
};
