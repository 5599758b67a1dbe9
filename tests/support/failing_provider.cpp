#include "tests/support/failing_provider.h"

namespace {

class FailingProvider : public DbProvider {
public:
    FailingProvider(std::unique_ptr<DbProvider> real, int &left) : m_real(std::move(real)), m_left(left) {}

    bool open(const QString &connectionString) override { return passed(m_real->open(connectionString)); }
    void close() override { m_real->close(); }
    bool isOpen() const override { return m_real->isOpen(); }
    QString databaseName() const override { return m_real->databaseName(); }
    bool query(const QString &sql, Recordset &rows) override {
        return !failsNow() && passed(m_real->query(sql, rows));
    }
    bool execute(const QString &sql, qint64 *affected) override {
        return !failsNow() && passed(m_real->execute(sql, affected));
    }
    bool begin() override { return !failsNow() && passed(m_real->begin()); }
    bool commit() override { return !failsNow() && passed(m_real->commit()); }
    bool rollback() override { return passed(m_real->rollback()); }
    void setCommandTimeout(int seconds) override { m_real->setCommandTimeout(seconds); }

private:
    bool failsNow() {
        if (--m_left != 0)
            return false;
        m_real->rollback(); // as every provider does when a statement fails
        m_errors.append({-2147217900, FailingConnection::description, QStringLiteral("test"),
                         QStringLiteral("HY000"), 13});
        return true;
    }
    bool passed(bool result) {
        m_errors.append(m_real->errors());
        m_real->clearErrors();
        return result;
    }

    std::unique_ptr<DbProvider> m_real;
    int &m_left;
};

} // namespace

FailingConnection::FailingConnection(const QString &connectionString, int nth)
    : m_left(nth), db([this](const QString &text) {
          return std::make_unique<FailingProvider>(makeProvider(text), m_left);
      }) {
    db.iInit(connectionString);
    db.iConnect();
}
