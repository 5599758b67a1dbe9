#pragma once

#include "db/provider.h"

#include <QStringList>

/// Takes note of every statement and transaction step instead of running it. One step can be told to fail.
class RecordingProvider : public DbProvider {
public:
    /// Outlives the provider, which belongs to the connection.
    struct Log {
        QStringList steps;
        QString failing; ///< steps that begin with this fail
        QStringList resultColumns = {QStringLiteral("n")};
        QList<qint64> resultRow; ///< the one row of every result; empty: one Null
        qint64 affected = 1;
    };

    explicit RecordingProvider(Log &log) : m_log(log) {}

    bool open(const QString &) override { return m_open = true; }
    void close() override { m_open = false; }
    bool isOpen() const override { return m_open; }
    QString databaseName() const override { return {}; }
    void setCommandTimeout(int) override {}

    bool query(const QString &sql, Recordset &rows) override {
        rows.open(m_log.resultColumns, Recordset::Encoding::Utf8);
        if (m_log.resultRow.isEmpty())
            rows.appendNull();
        for (const qint64 number : m_log.resultRow)
            rows.appendInteger(number);
        return step(sql);
    }
    bool execute(const QString &sql, qint64 *affected) override {
        if (affected)
            *affected = m_log.affected;
        return step(sql);
    }
    bool begin() override { return step(QStringLiteral("begin")); }
    bool commit() override { return step(QStringLiteral("commit")); }
    bool rollback() override { return step(QStringLiteral("rollback")); }

private:
    bool step(const QString &text) {
        m_log.steps.append(text);
        if (m_log.failing.isEmpty() || !text.startsWith(m_log.failing))
            return true;
        m_errors.append({-2147217900, QStringLiteral("refused"), QStringLiteral("test"), {}, 0});
        return false;
    }

    Log &m_log;
    bool m_open = false;
};
