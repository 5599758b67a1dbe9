// Reading 100,000 rows of 20 columns through OdbcProvider into a recordset, beside a bare loop of the plain
// C interface that binds the same columns, fetches blocks and drops them.

#include "db/odbc/odbc_drivers.h"
#include "db/odbc/odbc_provider.h"
#include "tests/odbc/postgres_server.h"

#include <QElapsedTimer>
#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int rowCount = 100000;
constexpr int columnCount = 20;
constexpr int runs = 7;
constexpr double target = 1.5; ///< times the bare loop

const QString table = uR"(
CREATE TABLE patients AS SELECT
  i AS id, (i % 7)::smallint AS branch, (i % 3)::smallint AS sub, i::bigint * 1000003 AS big, i % 2 = 0 AS flag,
  (i * 1.25)::numeric(19,4) AS fee, (i % 5000)::numeric(10,0) AS count, i * 0.1::float8 AS distance,
  date '2023-01-01' + i % 1500 AS from_date, date '2023-06-30' + i % 1500 AS to_date,
  timestamp '2026-01-01 08:30' + i * interval '1 minute' AS updated,
  ('山田　花子' || i)::varchar(40) AS name, ('ﾔﾏﾀﾞ ﾊﾅｺ' || i)::varchar(40) AS kana,
  ('東京都千代田区丸の内' || i % 900)::varchar(120) AS address, ('03-1234-' || i % 10000)::varchar(20) AS phone,
  '筋麻痺・関節拘縮'::varchar(60) AS findings, NULLIF('変形徒手矯正術', CASE WHEN i % 2 = 0 THEN '変形徒手矯正術' END)::varchar(60) AS part,
  ('高橋整形外科' || i % 200)::varchar(80) AS hospital, ('髙﨑 医師' || i % 300)::varchar(40) AS doctor,
  repeat('備考', i % 20)::varchar(100) AS remark
FROM generate_series(1, 100000) AS i)"_s;

struct BareColumn {
    SQLSMALLINT type;
    SQLLEN bytes;
};

constexpr SQLLEN wide(SQLLEN length) {
    return (length + 1) * SQLLEN(sizeof(SQLWCHAR));
}

constexpr std::array<BareColumn, columnCount> bareColumns = {{
    {SQL_C_SBIGINT, 8},
    {SQL_C_SBIGINT, 8},
    {SQL_C_SBIGINT, 8},
    {SQL_C_SBIGINT, 8},
    {SQL_C_BIT, 1},
    {SQL_C_WCHAR, wide(24)},
    {SQL_C_WCHAR, wide(24)},
    {SQL_C_DOUBLE, 8},
    {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)},
    {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)},
    {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)},
    {SQL_C_WCHAR, wide(40)},
    {SQL_C_WCHAR, wide(40)},
    {SQL_C_WCHAR, wide(120)},
    {SQL_C_WCHAR, wide(20)},
    {SQL_C_WCHAR, wide(60)},
    {SQL_C_WCHAR, wide(60)},
    {SQL_C_WCHAR, wide(80)},
    {SQL_C_WCHAR, wide(40)},
    {SQL_C_WCHAR, wide(100)},
}};

const QString select = u"SELECT * FROM patients"_s;

int bareLoop(SQLHDBC connection) {
    constexpr size_t blockRows = 200;
    SQLHSTMT statement = nullptr;
    SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement);
    SQLULEN fetched = 0;
    SQLSetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, odbcAttribute(blockRows), 0);
    SQLSetStmtAttrW(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
    SQLExecDirectW(statement, odbcText(select), SQL_NTS);
    std::array<std::vector<char>, columnCount> values;
    std::array<std::vector<SQLLEN>, columnCount> lengths;
    for (size_t i = 0; i < columnCount; ++i) {
        values[i].resize(blockRows * size_t(bareColumns[i].bytes));
        lengths[i].resize(blockRows);
        SQLBindCol(statement, SQLUSMALLINT(i + 1), bareColumns[i].type, values[i].data(),
                   bareColumns[i].bytes, lengths[i].data());
    }
    int rows = 0;
    while (SQL_SUCCEEDED(SQLFetch(statement)))
        rows += int(fetched);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    return rows;
}

int throughProvider(OdbcProvider &provider) {
    Recordset rows;
    return provider.query(select, rows) ? rows.rowCount() : 0;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Milliseconds of one run; negative when it did not read everything.
template <class Read> double timed(Read read) {
    QElapsedTimer timer;
    timer.start();
    const int rows = read();
    return rows == rowCount ? double(timer.nsecsElapsed()) / 1e6 : -1.0;
}

} // namespace

int main() {
    PostgresServer server;
    OdbcProvider provider;
    OdbcConnection bare;
    QList<ProviderError> errors;
    const ConnectionString source(server.connectionString());
    if (!server.problem().isEmpty() || !provider.open(source.text()) || !provider.execute(table, nullptr) ||
        !bare.logIn(odbcTarget(source, installedOdbcDrivers()), std::chrono::seconds(10), errors)) {
        std::fprintf(stderr, "no server to read from: %s\n", qPrintable(server.problem()));
        return 1;
    }
    std::vector<double> bareTimes;
    std::vector<double> providerTimes;
    for (int run = 0; run <= runs; ++run) {
        const double bareTime = timed([&] { return bareLoop(bare.handle()); });
        const double providerTime = timed([&] { return throughProvider(provider); });
        if (bareTime < 0 || providerTime < 0) {
            std::fprintf(stderr, "not all rows were read\n");
            return 1;
        }
        if (run > 0) { // The first run warms the caches.
            bareTimes.push_back(bareTime);
            providerTimes.push_back(providerTime);
        }
    }
    const double ratio = median(providerTimes) / median(bareTimes);
    std::printf("%d rows of %d columns, median of %d runs\n", rowCount, columnCount, runs);
    std::printf("  bare block fetch  %7.1f ms\n", median(bareTimes));
    std::printf("  OdbcProvider      %7.1f ms  %.2f times, target %.2f\n", median(providerTimes), ratio,
                target);
    return ratio <= target ? 0 : 1;
}
