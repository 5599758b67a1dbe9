#include "db/odbc/odbc_rows.h"

#include "db/odbc/odbc_errors.h"
#include "db/odbc/odbc_values.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <cstring>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr size_t blockBytes = size_t{512} * 1024;
constexpr size_t mostBlockRows = 1000;
constexpr size_t mostReservedCells = 4000000; ///< a row count before the rows is a hint, too
constexpr SQLULEN usualTextLength = 255; ///< characters that are bound where longer ones can be fetched again
constexpr SQLULEN mostTrustedLength = 4000; ///< a size above is no bound but "unlimited"
constexpr size_t decimalLength = 64;
constexpr size_t firstLongChunk = size_t{16} * 1024;

/// A texts' end takes one more unit in every buffer.
constexpr size_t textBytes(size_t length) {
    return (length + 1) * sizeof(SQLWCHAR);
}

size_t aligned(size_t offset) {
    return (offset + 7) / 8 * 8;
}

template <class T> T valueAt(const char *from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

/// Blanks at a text's end do not count for the servers, which fill CHAR columns up with them: a code must
/// find here what it finds there.
size_t withoutBlanksAtEnd(const char *text, size_t bytes) {
    while (bytes >= sizeof(char16_t) && valueAt<char16_t>(text + bytes - sizeof(char16_t)) == u' ')
        bytes -= sizeof(char16_t);
    return bytes;
}

} // namespace

bool OdbcRowReader::failed() {
    m_errors += odbcDiagnostics(SQL_HANDLE_STMT, m_statement);
    if (m_errors.isEmpty())
        m_errors = {odbcError(u"HY000"_s, u"結果を読めません。"_s)};
    return false;
}

bool OdbcRowReader::readAll(Recordset &rows) {
    if (!describe())
        return false;
    chooseCapacities();
    QStringList names;
    for (const Column &column : m_columns)
        names.append(column.name);
    rows.open(names, Recordset::Encoding::Utf16);
    if (!bind())
        return false;

    SQLLEN expected = 0;
    if (SQL_SUCCEEDED(SQLRowCount(m_statement, &expected)) && expected > 0)
        rows.reserve(std::min<size_t>(size_t(expected), mostReservedCells / m_columns.size()));
    for (;;) {
        const SQLRETURN result = SQLFetch(m_statement);
        if (result == SQL_NO_DATA)
            return true;
        if (!SQL_SUCCEEDED(result) || !appendBlock(rows, m_fetched))
            return failed();
    }
}

bool OdbcRowReader::describe() {
    SQLSMALLINT count = 0;
    if (!SQL_SUCCEEDED(SQLNumResultCols(m_statement, &count)))
        return failed();
    m_columns.resize(size_t(count));
    for (SQLUSMALLINT number = 1; number <= count; ++number)
        if (!describeColumn(number, m_columns[number - 1u]))
            return failed();
    return true;
}

bool OdbcRowReader::describeColumn(SQLUSMALLINT number, Column &column) {
    std::array<SQLWCHAR, 257> name{};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT type = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    if (!SQL_SUCCEEDED(SQLDescribeColW(m_statement, number, name.data(), SQLSMALLINT(name.size()),
                                       &nameLength, &type, &column.size, &digits, &nullable)))
        return false;
    column.name = QString::fromUtf16(reinterpret_cast<const char16_t *>(name.data()));
    switch (type) {
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
        column.kind = Kind::Integer;
        break;
    case SQL_BIT:
        column.kind = Kind::Bit;
        break;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
        column.kind = Kind::Real;
        break;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
        column.kind = Kind::Decimal;
        break;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
        column.kind = Kind::Timestamp;
        break;
    case SQL_BINARY:
    case SQL_VARBINARY:
        column.size *= 2; // read as hexadecimal digits
        break;
    default:
        break;
    }
    return true;
}

void OdbcRowReader::chooseCapacities() {
    bool bound = true;
    for (Column &column : m_columns) {
        switch (column.kind) {
        case Kind::Integer:
            column.capacity = sizeof(SQLBIGINT);
            break;
        case Kind::Bit:
            column.capacity = sizeof(SQLCHAR);
            break;
        case Kind::Real:
            column.capacity = sizeof(SQLDOUBLE);
            break;
        case Kind::Decimal:
            column.capacity = textBytes(decimalLength);
            break;
        case Kind::Timestamp:
            column.capacity = sizeof(SQL_TIMESTAMP_STRUCT);
            break;
        case Kind::Text: {
            const bool trusty = column.size > 0 && column.size <= mostTrustedLength;
            if (m_readsCellsOfBlocks)
                column.capacity =
                    textBytes(trusty ? std::min(column.size, usualTextLength) : usualTextLength);
            else if (trusty)
                column.capacity = textBytes(column.size);
            else
                bound = false;
        }
        }
        column.bound = bound;
        column.offset = m_rowBytes;
        column.indicator = aligned(column.offset + column.capacity);
        m_rowBytes = column.indicator + sizeof(SQLLEN);
    }
    if (bound)
        m_blockRows = std::clamp<size_t>(blockBytes / m_rowBytes, 1, mostBlockRows);
    m_block.resize(m_blockRows * m_rowBytes);
}

namespace {

SQLSMALLINT cType(int kind) {
    constexpr std::array<SQLSMALLINT, 6> types = {SQL_C_SBIGINT,        SQL_C_BIT,  SQL_C_DOUBLE, SQL_C_WCHAR,
                                                  SQL_C_TYPE_TIMESTAMP, SQL_C_WCHAR};
    return types[size_t(kind)];
}

} // namespace

bool OdbcRowReader::bind() {
    m_rowStatus.assign(m_blockRows, SQL_ROW_SUCCESS);
    const bool set =
        SQL_SUCCEEDED(SQLSetStmtAttrW(m_statement, SQL_ATTR_ROW_BIND_TYPE, odbcAttribute(m_rowBytes), 0)) &&
        SQL_SUCCEEDED(SQLSetStmtAttrW(m_statement, SQL_ATTR_ROW_ARRAY_SIZE, odbcAttribute(m_blockRows), 0)) &&
        SQL_SUCCEEDED(SQLSetStmtAttrW(m_statement, SQL_ATTR_ROW_STATUS_PTR, m_rowStatus.data(), 0)) &&
        SQL_SUCCEEDED(SQLSetStmtAttrW(m_statement, SQL_ATTR_ROWS_FETCHED_PTR, &m_fetched, 0));
    if (!set)
        return failed();
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const Column &column = m_columns[i];
        if (column.bound &&
            !SQL_SUCCEEDED(SQLBindCol(m_statement, SQLUSMALLINT(i + 1), cType(int(column.kind)),
                                      rowStart(0) + column.offset, SQLLEN(column.capacity),
                                      reinterpret_cast<SQLLEN *>(rowStart(0) + column.indicator))))
            return failed();
    }
    return true;
}

bool OdbcRowReader::appendBlock(Recordset &rows, size_t count) {
    for (size_t row = 0; row < count; ++row)
        if (m_rowStatus[row] == SQL_ROW_ERROR || !appendRow(rows, row))
            return false;
    return true;
}

bool OdbcRowReader::appendRow(Recordset &rows, size_t row) {
    for (size_t i = 0; i < m_columns.size(); ++i)
        if (!appendCell(rows, row, SQLUSMALLINT(i + 1)))
            return false;
    return true;
}

bool OdbcRowReader::appendCell(Recordset &rows, size_t row, SQLUSMALLINT number) {
    const Column &column = m_columns[number - 1u];
    auto length = valueAt<SQLLEN>(rowStart(row) + column.indicator);
    if (!column.bound && !fetchCell(row, number, length))
        return false;
    if (length == SQL_NULL_DATA) {
        rows.appendNull();
        return true;
    }
    const char *value = rowStart(row) + column.offset;
    switch (column.kind) {
    case Kind::Integer:
        rows.appendInteger(valueAt<SQLBIGINT>(value));
        return true;
    case Kind::Bit:
        rows.appendInteger(*value == 0 ? 0 : 1);
        return true;
    case Kind::Real:
        rows.appendReal(valueAt<SQLDOUBLE>(value));
        return true;
    case Kind::Timestamp:
        appendTimestamp(rows, valueAt<SQL_TIMESTAMP_STRUCT>(value));
        return true;
    case Kind::Decimal:
    case Kind::Text:
        return appendText(rows, row, number, length);
    }
    return false;
}

bool OdbcRowReader::appendText(Recordset &rows, size_t row, SQLUSMALLINT number, SQLLEN length) {
    const Column &column = m_columns[number - 1u];
    const char *text = rowStart(row) + column.offset;
    const bool fits = length >= 0 && size_t(length) + sizeof(SQLWCHAR) <= column.capacity;
    if (!fits) {
        bool isNull = false;
        if (column.bound) {
            if (!m_readsCellsOfBlocks) {
                m_errors = {odbcError(
                    u"HY000"_s, u"列「%1」の値がドライバーの示した長さを超えています。"_s.arg(column.name))};
                return false;
            }
            if (!SQL_SUCCEEDED(SQLSetPos(m_statement, row + 1, SQL_POSITION, SQL_LOCK_NO_CHANGE)))
                return false;
        }
        if (!fetchText(number, isNull))
            return false;
        if (isNull) {
            rows.appendNull();
            return true;
        }
        text = m_longText.data();
        length = SQLLEN(m_longTextBytes);
    }
    if (column.kind == Kind::Text)
        rows.appendText(text, withoutBlanksAtEnd(text, size_t(length)));
    else
        appendDecimal(
            rows, QStringView(reinterpret_cast<const char16_t *>(text), length / SQLLEN(sizeof(char16_t))));
    return true;
}

/// Fetches a cell that is not bound: a text is left to fetchText, anything else goes where it would be bound.
bool OdbcRowReader::fetchCell(size_t row, SQLUSMALLINT number, SQLLEN &length) {
    const Column &column = m_columns[number - 1u];
    if (column.kind == Kind::Text) {
        length = SQL_NO_TOTAL;
        return true;
    }
    return SQL_SUCCEEDED(SQLGetData(m_statement, number, cType(int(column.kind)),
                                    rowStart(row) + column.offset, SQLLEN(column.capacity), &length));
}

bool OdbcRowReader::fetchText(SQLUSMALLINT number, bool &isNull) {
    m_longTextBytes = 0;
    for (size_t chunk = firstLongChunk;;) {
        m_longText.resize(m_longTextBytes + chunk);
        SQLLEN length = 0;
        const SQLRETURN result = SQLGetData(m_statement, number, SQL_C_WCHAR,
                                            m_longText.data() + m_longTextBytes, SQLLEN(chunk), &length);
        if (result == SQL_NO_DATA)
            return true;
        if (!SQL_SUCCEEDED(result))
            return false;
        isNull = length == SQL_NULL_DATA;
        if (isNull)
            return true;
        const size_t room = chunk - sizeof(SQLWCHAR);
        const bool isRest = length != SQL_NO_TOTAL && size_t(length) <= room;
        m_longTextBytes += isRest ? size_t(length) : room;
        if (isRest)
            return true;
        // The length says what is left of the whole; some drivers do not know.
        chunk = length == SQL_NO_TOTAL ? chunk * 2 : size_t(length) - room + sizeof(SQLWCHAR);
    }
}
