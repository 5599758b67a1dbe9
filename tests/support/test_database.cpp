#include "tests/support/test_database.h"

#include "tests/support/test_environment.h"

#include <QFile>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// Past the program's own provider: what is not under test must not be able to hide a fault in it.
std::unique_ptr<sqlite3, decltype(&sqlite3_close)> open(const QString &path) {
    sqlite3 *raw = nullptr;
    EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &raw), SQLITE_OK);
    sqlite3_busy_timeout(raw, 5000);
    // A test's data need not survive a power failure; syncing took most of the tests' time.
    sqlite3_exec(raw, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
    // Comparing byte by byte is enough for what tests look up.
    sqlite3_create_collation(
        raw, "Japanese_CI_AS", SQLITE_UTF8, nullptr,
        [](void *, int leftLength, const void *left, int rightLength, const void *right) {
            return QByteArray::fromRawData(static_cast<const char *>(left), leftLength)
                .compare(QByteArray::fromRawData(static_cast<const char *>(right), rightLength));
        });
    return {raw, &sqlite3_close};
}

} // namespace

TestDatabase::TestDatabase() {
    QFile schema(QStringLiteral(DOUISHO_SCHEMA));
    EXPECT_TRUE(schema.open(QIODevice::ReadOnly));
    run(u"BEGIN;"_s + QString::fromUtf8(schema.readAll()) + u"COMMIT;"_s);
    EXPECT_EQ(db.iInit(connectionString()), 0);
    EXPECT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();
}

void TestDatabase::run(const QString &sql) const {
    const auto handle = open(path());
    char *fault = nullptr;
    EXPECT_EQ(sqlite3_exec(handle.get(), sql.toUtf8().constData(), nullptr, nullptr, &fault), SQLITE_OK)
        << (fault ? fault : "");
    sqlite3_free(fault);
}

QStringList TestDatabase::rows(const QString &sql) const {
    QStringList rows;
    const auto take = [](void *to, int count, char **values, char **) {
        QStringList cells;
        for (int i = 0; i < count; ++i)
            cells.append(values[i] ? QString::fromUtf8(values[i]) : QStringLiteral("NULL"));
        static_cast<QStringList *>(to)->append(cells.join(u'|'));
        return 0;
    };
    const auto handle = open(path());
    EXPECT_EQ(sqlite3_exec(handle.get(), sql.toUtf8().constData(), take, &rows, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle.get());
    return rows;
}
